#pragma once

#include "geodata/gdalruntime.h"

#include <QRect>
#include <QStringList>

#include <vector>

/// Runs gdalwarp's own function over datasets and gives back what it made: in memory, or
/// as a virtual raster. Null where that fails, with GDAL's message; `progress` may be
/// null.
[[nodiscard]] Dataset warped(const std::vector<GDALDatasetH> &sources,
                             const QStringList &arguments, GdalProgress *progress);

/// The same for gdal_translate.
[[nodiscard]] Dataset translated(GDALDatasetH source, const QStringList &arguments);

/// A window of a raster as a virtual one.
[[nodiscard]] Dataset windowOf(GDALDatasetH source, const QRect &cells);
