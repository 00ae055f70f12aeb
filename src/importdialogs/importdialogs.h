#pragma once

#include "views/dialogentry.h"

#include <span>

/// The dialogs that import elevations, in the order of their menu.
[[nodiscard]] std::span<const DialogEntry> importDialogs();
