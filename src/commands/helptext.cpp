#include "commands/helptext.h"

#include "commands/arguments.h"

#include <algorithm>

namespace {

constexpr qsizetype Width = 79;
constexpr qsizetype Indent = 6; // of what explains the line above

const char ExitStatuses[] = "Exit status: 0 done, 1 failed, 2 wrong usage, 130 stopped "
                            "by SIGINT or SIGTERM.";

// Lines of whole words that begin with so many blanks.
QString wrapped(const QString &text, qsizetype indent)
{
    QString lines;
    QString line;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        if (!line.isEmpty() && indent + line.size() + 1 + word.size() > Width) {
            lines += QString(indent, QLatin1Char(' ')) + line + QLatin1Char('\n');
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    return lines + QString(indent, QLatin1Char(' ')) + line + QLatin1Char('\n');
}

QString entry(const QString &head, const QString &text)
{
    return QStringLiteral("  %1\n").arg(head) + wrapped(text, Indent);
}

QString headOf(const Option &option)
{
    return QStringLiteral("--%1%2").arg(option.name,
                                        option.kind == OptionKind::Flag
                                            ? QString()
                                            : QLatin1Char(' ') + option.valueName);
}

bool tellsRange(const Option &option)
{
    switch (option.kind) {
    case OptionKind::Integer:
    case OptionKind::Real:
    case OptionKind::Size:
    case OptionKind::Choice:
        return true;
    default:
        return false;
    }
}

QString defaultOf(const Option &option)
{
    if (option.required)
        return QStringLiteral("required");
    if (!option.defaultNote.isEmpty())
        return QStringLiteral("default: ") + option.defaultNote;
    if (option.kind == OptionKind::Flag)
        return QStringLiteral("default: off");
    return option.defaultValue.isEmpty()
               ? QStringLiteral("default: none")
               : QStringLiteral("default: ") + option.defaultValue;
}

// The range and the default stand in lines of their own, so that no line break falls
// into them.
QString entryOf(const Option &option)
{
    QString text = entry(headOf(option), option.help);
    const QString indent(Indent, QLatin1Char(' '));
    if (tellsRange(option))
        text += wrapped(QStringLiteral("Takes %1.").arg(takenBy(option)), Indent);
    text += indent + defaultOf(option);
    text += option.several ? QStringLiteral("; may be given several times\n")
                           : QStringLiteral("\n");
    return text;
}

QString examplesText(const QStringList &lines)
{
    if (lines.isEmpty())
        return {};
    QString text = QStringLiteral("\nExamples:\n");
    for (const QString &line : lines)
        text += QStringLiteral("  %1\n").arg(line);
    return text;
}

// The options that are asked of every program.
QString commonEntries(bool ofACommand)
{
    QString text;
    if (ofACommand)
        for (const Option &option : commonOptions())
            text += entry(headOf(option), option.help);
    text += entry(QStringLiteral("-h, --help"), QStringLiteral("Tells this."));
    return text + entry(QStringLiteral("-v, --version"),
                        QStringLiteral("Tells the version of the program."));
}

QString usageOf(const Program &program, const Command &command)
{
    QString usage = QStringLiteral("%1 %2").arg(program.name, command.name);
    for (const Option &option : command.options)
        if (option.required)
            usage += QLatin1Char(' ') + headOf(option);
    usage += QStringLiteral(" [options]");
    for (const Positional &place : command.positionals)
        usage += QStringLiteral(" %1%2").arg(
            place.name, place.several ? QStringLiteral("...") : QString());
    return usage;
}

} // namespace

QString helpOf(const Program &program)
{
    QString text =
        QStringLiteral("Usage: %1 COMMAND [options] FILES...\n\n").arg(program.name) +
        wrapped(program.summary, 0) + QStringLiteral("\nCommands:\n");
    for (const Command &command : program.commands)
        text += entry(command.name, command.summary);
    return text + QStringLiteral("\nOptions:\n") + commonEntries(false) +
           QStringLiteral(
               "\n%1 COMMAND --help tells the files and options of a command.\n")
               .arg(program.name) +
           examplesText(program.examples) + QLatin1Char('\n') +
           wrapped(QLatin1String(ExitStatuses), 0);
}

QString helpOf(const Program &program, const Command &command)
{
    QString text = QStringLiteral("Usage: %1\n\n").arg(usageOf(program, command)) +
                   wrapped(command.summary, 0);
    if (!command.positionals.empty())
        text += QStringLiteral("\nFiles:\n");
    for (const Positional &place : command.positionals)
        text += entry(place.name + (place.several ? QStringLiteral("...") : QString()),
                      place.help);
    text += QStringLiteral("\nOptions:\n");
    for (const Option &option : command.options)
        text += entryOf(option);
    return text + commonEntries(true) + examplesText(command.examples) +
           QLatin1Char('\n') + wrapped(QLatin1String(ExitStatuses), 0);
}
