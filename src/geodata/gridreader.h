#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "geodata/mosaic.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"

/// Reads the cells of a grid: as they are where they fall on cells of the mosaic, else as
/// `gdalwarp -et 0 -ot Float32 -ovr NONE` makes them. On all cores, the same on any
/// number of them. Progress counts thousandths.
[[nodiscard]] Result<Heights> readHeights(const Mosaic &mosaic, const OutputGrid &grid,
                                          Progress &progress);

/// Room for heights. Fails with a sentence where there is not enough memory.
[[nodiscard]] Result<Heights> emptyHeights(const QSize &size);
