#pragma once

#include "base/result.h"
#include "geodata/mosaic.h"
#include "terrain/terrainsource.h"

/// The whole of a mosaic at a size of at most `most`, its shape kept: its own rows and
/// columns, also of a rotated raster; of rasters that do not lie on one grid, those of
/// `whole`.
[[nodiscard]] Result<Heights> readOverview(const Mosaic &mosaic, const OutputGrid &whole,
                                           const QSize &most,
                                           const Terrain::RowsReady &ready);
