#pragma once

#include "raster/elevationimage.h"

/// Pixels of a side that is `percent` of `source` pixels long.
[[nodiscard]] int pixelsOfPercent(int source, double percent);
/// Length of a side of `pixels` in percent of `source` pixels.
[[nodiscard]] double percentOfPixels(int source, int pixels);

/// Fills `destination` with the elevations of `source`, stretched to its size
/// and multiplied by zScale. Reads are bilinear, so the last column and the
/// bottom row of the source count as 0. `destination` has to be RGB888. False where
/// one of them is null, or there is not enough memory.
[[nodiscard]] bool resample(const ElevationImage &source, double zScale,
                            ElevationImage &destination);
