// zephrant-render: renders the frames of a scenery without a window.

#include "batch/batchrun.h"
#include "batch/stopsignal.h"
#include "raster/failedwrites.h"

#include <QApplication>

#include <cstdio>

static void initResources() { Q_INIT_RESOURCE(Zephrant); }

namespace {

void writeLine(std::FILE *stream, const QString &line)
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), stream);
    std::fflush(stream); // a line is news, also through a pipe
}

// Debug lines, and what the toolkit says of a session without a desktop, are no news
// for a terminal.
void logMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg ||
        text.startsWith(QLatin1String("QStandardPaths:")))
        return;
    writeLine(stderr, text);
}

} // namespace

int main(int argc, char **argv)
{
    surviveFailedWrites();
    // The form that holds a scenery's values needs a window system, though no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(logMessage);
    initResources();
    const QApplication application(argc, argv);

    BatchOptions options;
    QString text;
    switch (readCommandLine(QApplication::arguments(), options, &text)) {
    case CommandLineResult::Help:
    case CommandLineResult::Version:
        std::fputs(qPrintable(text), stdout);
        return AllWritten;
    case CommandLineResult::Wrong:
        writeLine(stderr, text);
        writeLine(stderr, QStringLiteral("zephrant-render --help tells the options."));
        return WrongUsage;
    case CommandLineResult::Run:
        break;
    }
    StopSignal stop;
    BatchRun run(
        options, [](const QString &line) { writeLine(stdout, line); },
        [](const QString &line) { writeLine(stderr, line); });
    QObject::connect(&stop, &StopSignal::stopRequested, &run, &BatchRun::stop);
    const int status = run.run();
    if (status == Stopped)
        writeLine(stderr, QStringLiteral("Stopped."));
    return status;
}
