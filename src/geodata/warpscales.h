#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "geodata/mosaic.h"
#include "geodata/smoothtransform.h"

#include <QRect>

#include <gdalwarper.h>

#include <optional>
#include <vector>

/// How many cells of an output go on one of a raster in some part of the output. Kernels
/// that blur what shrinks take their width from it.
struct WarpScale {
    QRect cells; ///< of the output
    double x = 0.0;
    double y = 0.0; ///< 0: not asked for
};

/// The parts in which gdalwarp works on an output, and the scale that it finds for each:
/// one for all, as long as a part and what lies below it take less than 64 MB. To blur as
/// it does, work in other parts has to keep to these scales.
[[nodiscard]] Result<std::vector<WarpScale>>
warpScales(const Sheet &layer, const OutputGrid &grid, Progress &progress);

struct WarpOptionsDeleter {
    void operator()(GDALWarpOptions *options) const;
};
using WarpOptions = std::unique_ptr<GDALWarpOptions, WarpOptionsDeleter>;

/// What gdalwarp asks for to warp one band of heights; voids of the source are of a value
/// if it has some, those of the outcome NaN.
[[nodiscard]] WarpOptions warpOptions(GDALDatasetH source, std::optional<double> noData,
                                      Resampling resampling, SmoothTransform &way);

/// The way from a grid to a layer. A failure tells that there is none.
[[nodiscard]] Result<std::unique_ptr<SmoothTransform>> wayTo(GDALDatasetH layer,
                                                             const OutputGrid &grid);
