#pragma once

#include "base/result.h"
#include "geodata/mosaic.h"
#include "terrain/geogrid.h"

/// Finds the grid of a request: its reference system, its part of the earth and its
/// cells, as many as gdalwarp proposes for the same part. Fails on a part outside of the
/// mosaic, and on a system that is not known or cannot be reached.
[[nodiscard]] Result<OutputGrid> planGrid(const Mosaic &mosaic,
                                          const GridRequest &request);

/// The grid of the whole mosaic in its own reference system.
[[nodiscard]] Result<OutputGrid> planWhole(const Mosaic &mosaic);
