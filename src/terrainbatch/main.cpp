// zephrant-terrain: imports terrain and works on it without a window.

#include "commands/runprogram.h"
#include "commands/toldcommands.h"
#include "terrainbatch/trackcommands.h"

namespace {

std::vector<Command> allCommands()
{
    std::vector<Command> commands = toldCommands();
    commands.push_back(trackCommand());
    commands.push_back(pathCommand());
    return commands;
}

} // namespace

int main(int argc, char **argv)
{
    const Program program{
        .name = "zephrant-terrain",
        .version = ZEPHRANT_VERSION,
        .summary = "Imports terrain and works on elevation files without a window.",
        .commands = allCommands(),
        .examples = {"zephrant-terrain usgs-dem west.dem east.dem dem.png",
                     "    Two tiles as one elevation file.",
                     "zephrant-terrain resample --percent-x 50 dem.png small.png",
                     "    An elevation file of half the size.",
                     "zephrant-terrain elevation-to-gray --help",
                     "    Ranges and defaults of a command's options."}};
    return runProgram(program, argc, argv);
}
