#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

#include <QSize>

#include <optional>

/// Pixels of a side that is `percent` of `source` pixels long.
[[nodiscard]] int pixelsOfPercent(int source, double percent);
/// Length of a side of `pixels` in percent of `source` pixels.
[[nodiscard]] double percentOfPixels(int source, int pixels);

/// What is asked of the size of an output. A side goes by its pixels or its percentage;
/// one that is not asked for keeps the ratio of the sides.
struct ResampleRequest {
    static constexpr int MostPixels = 16384; ///< of a side
    static constexpr double MostPercent = 400.0;

    std::optional<int> pixelX = {};
    std::optional<int> pixelY = {};
    std::optional<double> percentX = {};
    std::optional<double> percentY = {};
};

/// The size that a request gives for a source, at most MostPixels a side. Without a wish
/// it is that of the source.
[[nodiscard]] QSize resampledSize(const QSize &source, const ResampleRequest &request);

/// The size of the output in pixels, and the factor for every elevation.
struct ResampleOptions {
    QSize size;
    double zScale = 1.0;
};

/// An RGB888 image with the elevations of `source`, stretched to another size. Reads
/// are bilinear, so the last column and the bottom row of the source count as 0. Steps
/// before each row. `cut` is told how many elevations were beyond what a pixel holds.
[[nodiscard]] Result<ElevationImage> resample(const ElevationImage &source,
                                              const ResampleOptions &options,
                                              Progress &progress, qint64 *cut = nullptr);
