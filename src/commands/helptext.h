#pragma once

#include "commands/command.h"

#include <QString>

/// What --help tells of a program: its commands, examples and exit statuses.
[[nodiscard]] QString helpOf(const Program &program);

/// What --help tells of a command: its files and options with their ranges and defaults.
[[nodiscard]] QString helpOf(const Program &program, const Command &command);
