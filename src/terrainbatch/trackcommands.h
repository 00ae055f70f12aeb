#pragma once

#include "commands/command.h"

/// track: a track becomes the curved flight of a scenery.
[[nodiscard]] Command trackCommand();
/// path: the flight of a scenery is written as a track.
[[nodiscard]] Command pathCommand();
