#pragma once

#include "commands/command.h"

#include <vector>

/// info, open and texture: terrain of any kind to a scenery, as "Open Terrain" does it.
[[nodiscard]] std::vector<Command> terrainCommands();
