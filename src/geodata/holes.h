#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/heights.h"

/// Fills holes that known cells enclose: those from which no way over voids, side by
/// side, leads to the edge. Cells further than `cells` from a known one stay. Returns how
/// many were filled. Where it fails or is stopped, the heights are of no use.
[[nodiscard]] Result<qint64> fillHoles(Heights &heights, double cells,
                                       Progress &progress);
