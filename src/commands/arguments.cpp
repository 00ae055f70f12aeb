#include "commands/arguments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <sys/stat.h>

std::vector<Option> commonOptions()
{
    return {{.name = "json", .help = "Prints the report as one JSON object."},
            {.name = "quiet",
             .help = "Tells no progress and no rows of findings; errors stay."}};
}

bool isSameFile(const QString &one, const QString &other)
{
    struct stat a {};
    struct stat b {};
    const bool oneExists = ::stat(QFile::encodeName(one).constData(), &a) == 0;
    const bool otherExists = ::stat(QFile::encodeName(other).constData(), &b) == 0;
    if (oneExists && otherExists)
        return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
    return oneExists == otherExists &&
           QDir::cleanPath(QFileInfo(one).absoluteFilePath()) ==
               QDir::cleanPath(QFileInfo(other).absoluteFilePath());
}

/// Reads the arguments of one command, one by one.
class ArgumentReader {
public:
    using Outcome = Arguments::Outcome;

    ArgumentReader(const Command &command, Arguments &arguments)
        : m_command(command), m_options(command.options), m_arguments(arguments)
    {
        for (Option &option : commonOptions())
            m_options.push_back(std::move(option));
        for (const Option &option : m_options)
            if (!option.defaultValue.isEmpty())
                m_arguments.m_defaults.insert(option.name, option.defaultValue);
    }

    Outcome read(const QStringList &given)
    {
        m_rest = given;
        bool onlyFiles = false; // behind a lone "--"
        while (!m_rest.isEmpty()) {
            const QString argument = m_rest.takeFirst();
            if (onlyFiles || !argument.startsWith(QLatin1Char('-')))
                m_files << argument;
            else if (argument == QLatin1String("--"))
                onlyFiles = true;
            else if (argument == QLatin1String("--help") ||
                     argument == QLatin1String("-h"))
                return Outcome::Help;
            else if (argument == QLatin1String("--version") ||
                     argument == QLatin1String("-v"))
                return Outcome::Version;
            else if (!readOption(argument))
                return Outcome::Wrong;
        }
        return placeFiles() && isComplete() && excludeEachOther() && keepsItsInputs() &&
                       suitsTheCommand()
                   ? Outcome::Run
                   : Outcome::Wrong;
    }

    [[nodiscard]] const QString &complaint() const { return m_complaint; }

private:
    bool wrong(const QString &complaint)
    {
        m_complaint = complaint;
        return false;
    }

    bool readOption(const QString &argument)
    {
        const qsizetype equals = argument.indexOf(QLatin1Char('='));
        const QString typed = argument.left(equals);
        const auto option =
            std::find_if(m_options.begin(), m_options.end(), [&](const Option &each) {
                return typed == QLatin1String("--") + each.name;
            });
        if (option == m_options.end())
            return wrong(QStringLiteral("There is no option %1.").arg(typed));
        if (option->kind == OptionKind::Flag) {
            m_arguments.m_given[option->name] = {};
            return equals < 0 || wrong(QStringLiteral("%1 takes no value.").arg(typed));
        }
        if (equals < 0 && m_rest.isEmpty())
            return wrong(QStringLiteral("%1 takes %2.").arg(typed, takenBy(*option)));
        const QString value = equals < 0 ? m_rest.takeFirst() : argument.mid(equals + 1);
        const QString fault = complaintOf(*option, value);
        m_arguments.m_given[option->name] << value;
        return fault.isEmpty() || wrong(fault);
    }

    // Gives the files to the positionals; the one that takes several gets all that the
    // others leave.
    bool placeFiles()
    {
        const auto &places = m_command.positionals;
        const qsizetype spare = m_files.size() - qsizetype(places.size());
        const bool several = std::any_of(places.begin(), places.end(),
                                         [](const Positional &p) { return p.several; });
        if (m_files.contains(QString()))
            return wrong(QStringLiteral("The name of a file is empty."));
        if (spare < 0)
            return wrong(QStringLiteral("%1 is missing.")
                             .arg(places[size_t(m_files.size())].name));
        if (spare > 0 && !several)
            return wrong(QStringLiteral("There is one argument too many: \"%1\".")
                             .arg(m_files.at(qsizetype(places.size()))));
        qsizetype next = 0;
        for (const Positional &place : places) {
            const qsizetype count = place.several ? 1 + spare : 1;
            m_arguments.m_given[place.name] = m_files.mid(next, count);
            next += count;
        }
        return true;
    }

    bool isComplete()
    {
        for (const Option &option : m_options)
            if (option.required && !m_arguments.has(option.name))
                return wrong(QStringLiteral("--%1 is missing: it takes %2.")
                                 .arg(option.name, takenBy(option)));
        return true;
    }

    bool excludeEachOther()
    {
        QHash<QString, QString> first;
        for (const Option &option : m_options) {
            if (option.group.isEmpty() || !m_arguments.has(option.name))
                continue;
            if (first.contains(option.group))
                return wrong(QStringLiteral("--%1 and --%2 exclude each other.")
                                 .arg(first.value(option.group), option.name));
            first.insert(option.group, option.name);
        }
        return true;
    }

    [[nodiscard]] QStringList filesOf(OptionKind kind) const
    {
        QStringList files;
        for (const Positional &place : m_command.positionals)
            if (place.kind == kind)
                files << m_arguments.texts(place.name);
        for (const Option &option : m_options)
            if (option.kind == kind)
                files << m_arguments.texts(option.name);
        return files;
    }

    // A file that is read must not be the one that is written.
    bool keepsItsInputs()
    {
        for (const QString &output : filesOf(OptionKind::OutputFile))
            for (const QString &input : filesOf(OptionKind::InputFile))
                if (isSameFile(input, output))
                    return wrong(
                        QStringLiteral("\"%1\" cannot be read and written at the "
                                       "same time.")
                            .arg(output));
        return true;
    }

    bool suitsTheCommand()
    {
        const QString fault =
            m_command.complaint ? m_command.complaint(m_arguments) : QString();
        return fault.isEmpty() || wrong(fault);
    }

    const Command &m_command;
    std::vector<Option> m_options;
    Arguments &m_arguments;
    QStringList m_rest; // not yet read
    QStringList m_files;
    QString m_complaint;
};

Arguments::Outcome Arguments::read(const Command &command, const QStringList &given,
                                   QString *complaint)
{
    *this = {};
    ArgumentReader reader(command, *this);
    const Outcome outcome = reader.read(given);
    *complaint = reader.complaint();
    return outcome;
}

QString Arguments::text(const QString &name) const
{
    const QStringList values = m_given.value(name);
    return values.isEmpty() ? m_defaults.value(name) : values.constLast();
}

QStringList Arguments::texts(const QString &name) const
{
    QStringList values = m_given.value(name);
    if (!values.isEmpty() || !m_defaults.contains(name))
        return values;
    return {m_defaults.value(name)};
}

int Arguments::integer(const QString &name) const { return text(name).toInt(); }

double Arguments::real(const QString &name) const { return text(name).toDouble(); }

QList<double> Arguments::numbers(const QString &name) const
{
    QList<double> numbers;
    for (const QString &part : text(name).split(QLatin1Char(','), Qt::SkipEmptyParts))
        numbers << part.toDouble();
    return numbers;
}

QSize Arguments::size(const QString &name) const
{
    const QString sides = text(name);
    return {sides.section(QLatin1Char('x'), 0, 0).toInt(),
            sides.section(QLatin1Char('x'), 1, 1).toInt()};
}
