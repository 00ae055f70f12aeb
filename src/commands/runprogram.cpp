#include "commands/runprogram.h"

#include "base/failedwrites.h"
#include "base/notices.h"
#include "base/stopsignal.h"
#include "base/terminal.h"
#include "base/unfinished.h"
#include "commands/arguments.h"
#include "commands/commandwork.h"
#include "commands/helptext.h"
#include "commands/progressprinter.h"
#include "commands/quietoutput.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

constexpr char StoppedText[] = "Stopped.";

int statusOf(CommandStatus status) { return static_cast<int>(status); }

/// One run of a program of commands.
class ProgramRun {
public:
    explicit ProgramRun(Program (*make)())
        : m_stop([this] { endAtOnce(); }), m_program(make())
    {
        // On the thread that watches for signals: the work looks at the flag.
        QObject::connect(
            &m_stop, &StopSignal::stopRequested, &m_stop,
            [this] { m_stopRequested = true; }, Qt::DirectConnection);
        qInstallMessageHandler(logToTerminal);
        setNoticeSink([this](const QString &text, NoticeStay) { m_console.error(text); });
    }
    ~ProgramRun() { setNoticeSink({}); }
    ProgramRun(const ProgramRun &) = delete;
    ProgramRun &operator=(const ProgramRun &) = delete;

    CommandStatus run(QStringList words)
    {
        words.removeFirst(); // the program's own name
        if (words.isEmpty())
            return misused(QStringLiteral("No command is named."), {});
        const QString word = words.takeFirst();
        if (word == QLatin1String("--help") || word == QLatin1String("-h"))
            return tell(helpOf(m_program));
        if (word == QLatin1String("--version") || word == QLatin1String("-v"))
            return tellVersion();
        const auto &commands = m_program.commands;
        const auto command =
            std::find_if(commands.begin(), commands.end(),
                         [&word](const Command &each) { return each.name == word; });
        if (command == commands.end())
            return misused(word.startsWith(QLatin1Char('-'))
                               ? QStringLiteral("There is no option %1.").arg(word)
                               : QStringLiteral("There is no command \"%1\".").arg(word),
                           {});
        return run(*command, words);
    }

private:
    CommandStatus run(const Command &command, const QStringList &given)
    {
        Arguments arguments;
        QString complaint;
        switch (arguments.read(command, given, &complaint)) {
        case Arguments::Outcome::Help:
            return tell(helpOf(m_program, command));
        case Arguments::Outcome::Version:
            return tellVersion();
        case Arguments::Outcome::Wrong:
            return misused(complaint, command.name);
        case Arguments::Outcome::Run:
            break;
        }
        if (arguments.quiet())
            m_console.setTalk(Console::Talk::ErrorsOnly);
        const Result<Report> result = work(command, arguments);
        m_stop.end(); // a signal that comes now stops nothing any more
        if (!result)
            return failedWith(result.error());
        return print(*result, arguments);
    }

    Result<Report> work(const Command &command, const Arguments &arguments)
    {
        const QuietOutput onlyReports;
        ProgressPrinter progress(m_console, m_stopRequested);
        CommandWork with(m_console, progress);
        Result<Report> result = command.run(arguments, with);
        if (result)
            progress.end();
        else
            m_console.endProgress();
        return result;
    }

    CommandStatus failedWith(const Failure &failure)
    {
        if (!failure.text.isEmpty())
            m_console.error(failure.text);
        // Work that ends by itself, as where a question was answered No, was not stopped.
        if (!failure.stopped || !m_stopRequested)
            return CommandStatus::Failed;
        m_console.error(QLatin1String(StoppedText));
        return CommandStatus::Stopped;
    }

    CommandStatus print(const Report &report, const Arguments &arguments)
    {
        if (arguments.json())
            return tell(report.asJson());
        return arguments.quiet() || report.isEmpty() ? CommandStatus::Done
                                                     : tell(report.asText());
    }

    static CommandStatus tell(const QString &text)
    {
        return answer(text) ? CommandStatus::Done : CommandStatus::Failed;
    }

    CommandStatus tellVersion() const
    {
        return tell(QStringLiteral("%1 %2\n").arg(m_program.name, m_program.version));
    }

    CommandStatus misused(const QString &complaint, const QString &command)
    {
        m_console.error(complaint);
        m_console.error(
            command.isEmpty()
                ? QStringLiteral("%1 --help tells the commands.").arg(m_program.name)
                : QStringLiteral("%1 %2 --help tells the options.")
                      .arg(m_program.name, command));
        return CommandStatus::WrongUsage;
    }

    // For work that does not come to its end by itself. Files are whole or have no name,
    // so that there is nothing to wait for.
    void endAtOnce()
    {
        dropUnfinishedFiles();
        m_console.lastWord(QLatin1String(StoppedText));
        std::_Exit(statusOf(CommandStatus::Stopped));
    }

    Console m_console;
    std::atomic<bool> m_stopRequested = false;
    StopSignal m_stop; // first of what takes its time
    const Program m_program;
};

} // namespace

int runProgram(Program (*make)(), int argc, char **argv)
{
    surviveFailedWrites();
    // A program without screens has no resolution to give to its pictures; this is that
    // of usual screens, which the window gives.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    try {
        ProgramRun run(make);
        const QCoreApplication application(argc, argv);
        return statusOf(run.run(QCoreApplication::arguments()));
    } catch (const std::bad_alloc &) {
        tellError(QStringLiteral("Not enough memory."));
        return statusOf(CommandStatus::Failed);
    }
}
