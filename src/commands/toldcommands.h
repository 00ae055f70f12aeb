#pragma once

#include "commands/command.h"

#include <vector>

// The importers and tools of the window's menus as commands. Each does what its dialog
// does, opened anew; its options are the dialog's fields.

/// usgs-dem, binary-dem, japan-dem.
[[nodiscard]] std::vector<Command> demCommands();
/// sdts.
[[nodiscard]] std::vector<Command> sdtsCommands();
/// ascii-regular, ascii-irregular.
[[nodiscard]] std::vector<Command> meshCommands();
/// elevation-to-color, elevation-to-gray, gray-to-elevation, change-blue-0.
[[nodiscard]] std::vector<Command> conversionCommands();
/// convolution, mask, resample, rectify, merge.
[[nodiscard]] std::vector<Command> filterCommands();
/// All of them.
[[nodiscard]] std::vector<Command> toldCommands();
