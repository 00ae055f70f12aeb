// zephrant-terrain: opens and imports terrain and works on it without a window.

#include "commands/runprogram.h"
#include "commands/toldcommands.h"
#include "terrainbatch/terraincommands.h"
#include "terrainbatch/trackcommands.h"

namespace {

std::vector<Command> allCommands()
{
    std::vector<Command> commands = terrainCommands();
    commands.push_back(trackCommand());
    commands.push_back(pathCommand());
    for (Command &command : toldCommands())
        commands.push_back(std::move(command));
    return commands;
}

Program makeProgram()
{
    return {.name = "zephrant-terrain",
            .version = ZEPHRANT_VERSION,
            .summary =
                "Makes sceneries of terrain, imports and works on elevation files, "
                "without a window.",
            .commands = allCommands(),
            .examples = {
                "zephrant-terrain open alps.tif --out alps && zephrant-render alps.zph",
                "    A picture of a downloaded file.",
                "zephrant-terrain usgs-dem west.dem east.dem dem.png",
                "    Two tiles as one elevation file.", "zephrant-terrain open --help",
                "    Ranges and defaults of a command's options."}};
}

} // namespace

int main(int argc, char **argv) { return runProgram(makeProgram, argc, argv); }
