#pragma once

#include "commands/command.h"

/// What a program of commands ends with.
enum class CommandStatus {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    Stopped = 130,
};

/// The main() of a program of commands: reads the command line, runs the command, prints
/// its report, and ends soon after SIGINT or SIGTERM. Gives the program's exit status.
/// Signals are looked for before `make` is called, which may take its time.
[[nodiscard]] int runProgram(Program (*make)(), int argc, char **argv);
