// zephrant-render: renders the frames of a scenery without a window.

#include "base/failedwrites.h"
#include "base/notices.h"
#include "base/stopsignal.h"
#include "base/terminal.h"
#include "base/unfinished.h"
#include "batch/batchrun.h"

#include <QCoreApplication>

#include <cstdlib>
#include <new>

namespace {

// For a run that does not come to its end by itself. Files are whole or have no name, so
// that there is nothing to wait for.
void endAtOnce()
{
    dropUnfinishedFiles();
    tellError(QStringLiteral("Stopped."));
    std::_Exit(Stopped);
}

int render(int argc, char **argv)
{
    StopSignal stop(endAtOnce);
    qInstallMessageHandler(logToTerminal);
    setNoticeSink([](const QString &text, NoticeStay) { tellError(text); });
    const QCoreApplication application(argc, argv);
    BatchOptions options;
    QString text;
    switch (readCommandLine(QCoreApplication::arguments(), options, &text)) {
    case CommandLineResult::Help:
    case CommandLineResult::Version:
        return answer(text) ? AllWritten : RunFailed;
    case CommandLineResult::Wrong:
        tellError(text);
        tellError(QStringLiteral("zephrant-render --help tells the options."));
        return WrongUsage;
    case CommandLineResult::Run:
        break;
    }
    BatchRun run(options, tellProgress, tellError);
    QObject::connect(&stop, &StopSignal::stopRequested, &run, &BatchRun::stop);
    const int status = run.run();
    stop.end();
    if (status == Stopped)
        tellError(QStringLiteral("Stopped."));
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    surviveFailedWrites();
    try {
        return render(argc, argv);
    } catch (const std::bad_alloc &) {
        tellError(QStringLiteral("Not enough memory."));
        return RunFailed;
    }
}
