// The commands of tracks as a program of their own.
#include "commands/runprogram.h"
#include "terrainbatch/trackcommands.h"

int main(int argc, char **argv)
{
    return runProgram({.name = "tracks",
                       .version = "1",
                       .summary = "Tracks.",
                       .commands = {trackCommand(), pathCommand()}},
                      argc, argv);
}
