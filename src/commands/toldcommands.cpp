#include "commands/toldcommands.h"

#include <iterator>
#include <utility>

std::vector<Command> toldCommands()
{
    std::vector<Command> all;
    for (auto &some : {demCommands(), sdtsCommands(), meshCommands(),
                       conversionCommands(), filterCommands()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}
