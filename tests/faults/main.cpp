// Proves that no fault of disk or memory costs a file. See campaign.h.
//
//   fault_proof                         a share of it that a build can bear
//   fault_proof --all                   all of it
//   fault_proof --list                  the names of the operations
//   fault_proof --only scenery          one operation
//   fault_proof --only scenery write 3  one fault of it
//   fault_proof --self-test             whether mistakes are found

#include "faults/campaign.h"
#include "faults/modaltaker.h"

#include "base/failedwrites.h"

#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

int qInitResources_Zephrant();

namespace {

// What a build can bear.
constexpr CampaignOptions Share{2, 6};

void print(const QString &text)
{
    std::fputs(qPrintable(text), stdout);
    std::fflush(stdout);
}

// 0 where all is well.
int report(const CampaignResult &result)
{
    print(result.table);
    for (auto it = result.endsInLibraries.cbegin(); it != result.endsInLibraries.cend();
         ++it)
        print(QStringLiteral("    ends %1 times in %2\n").arg(it.value()).arg(it.key()));
    for (const QString &failure : result.failures)
        print(QStringLiteral("FAILED %1\n").arg(failure));
    return result.failures.isEmpty() ? 0 : 1;
}

// Each operation has a process of its own, whose copies do the work.
int inOwnProcess(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

int runAll(const QString &only, const CampaignOptions &options)
{
    int failed = 0;
    for (const OperationEntry &entry : allOperations())
        if (only.isEmpty() || entry.name.startsWith(only))
            failed |= inOwnProcess([&] { return report(runCampaign(entry, options)); });
    print(failed ? QStringLiteral("Faults cost something.\n")
                 : QStringLiteral("No fault costs a file.\n"));
    return failed;
}

int runSingle(const QString &name, const QString &kind, long n)
{
    const QStringList kinds{"write", "full", "flush", "rename", "create", "allocation"};
    for (const OperationEntry &entry : allOperations())
        if (entry.name == name)
            return report(
                runOne(entry, {FaultKind(std::max<qsizetype>(kinds.indexOf(kind), 0)), n,
                               true}));
    return 2;
}

int runSelfTest()
{
    const QString found =
        runCampaign(carelessOperation(), {}).failures.join(QLatin1Char('\n'));
    print(found + '\n');
    const QStringList mistakes{"target is not whole", "is not told", "leaves scratch"};
    return std::all_of(mistakes.begin(), mistakes.end(),
                       [&](const QString &mistake) { return found.contains(mistake); })
               ? 0
               : 1;
}

} // namespace

int main(int argc, char **argv)
{
    surviveFailedWrites();
    qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type == QtFatalMsg)
                print(text + '\n');
        });
    qInitResources_Zephrant();
    QTemporaryDir settings; // nobody's own
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
    GuardedApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments().mid(1);
    const QString only = arguments.value(arguments.indexOf("--only") + 1);
    if (arguments.contains("--list")) {
        for (const OperationEntry &entry : allOperations())
            print(entry.name + '\n');
        return 0;
    }
    if (arguments.contains("--self-test"))
        return inOwnProcess(runSelfTest);
    if (arguments.contains("--only") && arguments.size() == 4)
        return runSingle(only, arguments[2], arguments[3].toLong());
    return runAll(arguments.contains("--only") ? only : QString(),
                  arguments.contains("--all") ? CampaignOptions() : Share);
}
