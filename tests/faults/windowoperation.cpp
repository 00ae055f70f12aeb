#include "faults/modaltaker.h"
#include "faults/operation.h"

#include <QApplication>
#include <QDataStream>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned long NoteSize = 2048;
constexpr unsigned int Patience = 60; // s

void send(const Attempt &attempt, int descriptor)
{
    QFile out;
    if (!out.open(descriptor, QIODevice::WriteOnly))
        return;
    QDataStream stream(&out);
    stream << attempt.happened << attempt.told;
    for (const long count : attempt.counts)
        stream << qint64(count);
}

void receive(Attempt &attempt, int descriptor)
{
    QFile in;
    if (!in.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle))
        return;
    const QByteArray all = in.readAll();
    QDataStream stream(all);
    stream >> attempt.happened >> attempt.told;
    for (long &count : attempt.counts) {
        qint64 number = 0;
        stream >> number;
        count = long(number);
    }
}

char *sharedNote()
{
    static char *const note = static_cast<char *>(::mmap(
        nullptr, NoteSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    return note;
}

QString describeEnd(int status)
{
    const QString note = QString::fromLatin1(sharedNote());
    return note.isEmpty() ? QStringLiteral("signal %1").arg(WTERMSIG(status)) : note;
}

// What libraries say of each fault would be a long list.
void silence()
{
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
}

} // namespace

Attempt WindowOperation::performUnder(const Fault &fault)
{
    faultNoteEndsIn(sharedNote(), NoteSize);
    faultForbidUnnamedFiles(fault.unnamedFiles ? 0 : 1);
    ModalTaker taker;
    QEventLoop loop;
    // As an event, so that what it throws arrives where the program catches it.
    QTimer::singleShot(0, qApp, [&] {
        const auto quit = qScopeGuard([&loop] { loop.quit(); });
        faultArm(fault.kind, fault.n);
        perform();
    });
    loop.exec();
    faultDisarm();
    Attempt done;
    done.happened = faultHappened() != 0;
    done.told = taker.told();
    if (!notice().isEmpty())
        done.told << notice();
    for (int kind = 0; kind < FaultKinds; ++kind)
        done.counts[size_t(kind)] = faultCount(FaultKind(kind));
    return done;
}

Attempt WindowOperation::attempt(const Fault &fault)
{
    sharedNote()[0] = '\0';
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        qFatal("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(Patience);
        silence();
        send(performUnder(fault), ends[1]);
        ::_exit(0);
    }
    ::close(ends[1]);
    Attempt attempt;
    receive(attempt, ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    attempt.ended = WIFEXITED(status);
    if (!attempt.ended) {
        attempt.end = describeEnd(status);
        attempt.happened = true;
    }
    return attempt;
}
