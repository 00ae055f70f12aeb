#pragma once

#include "views/dialogentry.h"

#include <span>

/// The dialogs of the raster tools, in the order of their menus.
[[nodiscard]] std::span<const DialogEntry> toolDialogs();
