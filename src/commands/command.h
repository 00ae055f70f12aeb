#pragma once

#include "base/result.h"
#include "commands/option.h"
#include "commands/report.h"

#include <QString>
#include <QStringList>

#include <vector>

class Arguments;
class CommandWork;

/// A file that a command takes by its place.
struct Positional {
    QString name; ///< in capitals, as the help shows it and as Arguments knows it
    QString help = {};
    OptionKind kind = OptionKind::InputFile; ///< InputFile or OutputFile
    bool several = false;                    ///< one or more; at most one of a command
};

/// A command of a program, as a line of the program's table.
struct Command {
    QString name;
    QString summary; ///< one line, for the list of commands
    std::vector<Positional> positionals = {};
    std::vector<Option> options = {};
    /// Lines of examples: what is typed, and beneath it, indented, what that does.
    QStringList examples = {};
    /// Does the work. What it gives is the report of what it made. A failure's text is
    /// told; one without a text has been told by the command itself.
    Result<Report> (*run)(const Arguments &arguments, CommandWork &work) = nullptr;
    /// What no single option tells to be wrong, as a sentence; empty if nothing is.
    QString (*complaint)(const Arguments &arguments) = nullptr;
};

/// A program that is a set of commands.
struct Program {
    QString name;
    QString version;
    QString summary;
    std::vector<Command> commands = {};
    QStringList examples = {};
};
