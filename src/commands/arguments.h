#pragma once

#include "commands/command.h"

#include <QHash>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

/// What was given to a command, checked against its table. Options and files go by the
/// names of the table; an option that was not given has its default.
class Arguments {
public:
    /// What reading them came to.
    enum class Outcome { Run, Help, Version, Wrong };

    /// Reads what stands behind the name of the command. `complaint` receives what is
    /// wrong, as a sentence.
    [[nodiscard]] Outcome read(const Command &command, const QStringList &given,
                               QString *complaint);

    /// Whether an option was given.
    [[nodiscard]] bool has(const QString &name) const { return m_given.contains(name); }
    /// The value of a text, a choice or a file; that given last, or the default.
    [[nodiscard]] QString text(const QString &name) const;
    /// All values of an option or a file that may be given several times.
    [[nodiscard]] QStringList texts(const QString &name) const;
    [[nodiscard]] int integer(const QString &name) const;
    [[nodiscard]] double real(const QString &name) const;
    /// Of an option that takes several numbers; empty without a value.
    [[nodiscard]] QList<double> numbers(const QString &name) const;
    /// Empty without a value.
    [[nodiscard]] QSize size(const QString &name) const;

    [[nodiscard]] bool quiet() const { return has(QStringLiteral("quiet")); }
    [[nodiscard]] bool json() const { return has(QStringLiteral("json")); }

private:
    QHash<QString, QStringList> m_given;
    QHash<QString, QString> m_defaults;

    friend class ArgumentReader;
};

/// The options that every command has: --quiet and --json.
[[nodiscard]] std::vector<Option> commonOptions();

/// Whether two names stand for one file: a link to it, or one that is still to be made.
[[nodiscard]] bool isSameFile(const QString &one, const QString &other);
