#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

/// Pixels of a side that is `percent` of `source` pixels long.
[[nodiscard]] int pixelsOfPercent(int source, double percent);
/// Length of a side of `pixels` in percent of `source` pixels.
[[nodiscard]] double percentOfPixels(int source, int pixels);

/// The size of the output in pixels, and the factor for every elevation.
struct ResampleOptions {
    QSize size;
    double zScale = 1.0;
};

/// An RGB888 image with the elevations of `source`, stretched to another size. Reads
/// are bilinear, so the last column and the bottom row of the source count as 0. Steps
/// before each row.
[[nodiscard]] Result<ElevationImage> resample(const ElevationImage &source,
                                              const ResampleOptions &options,
                                              Progress &progress);
