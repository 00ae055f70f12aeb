#pragma once

#include "geodata/rasterfile.h"
#include "terrain/points.h"

/// Files of a request that are no rasters: points as text, or vectors with heights.
enum class PointKind { None, Text, Vectors };

/// What a file is, by its head. Rasters of GDAL are none; but text that it would read as
/// a raster is read as points here, whatever the order of its lines.
[[nodiscard]] PointKind pointKindOf(const QString &name);

/// The head of a file of points as text, also where it cannot be read as the options say;
/// fails only where the file cannot be opened.
[[nodiscard]] Result<PointPreview> headOfPoints(const QString &name,
                                                const PointOptions &options);

/// The surfaces of files of points, in the order in which they lie on each other.
[[nodiscard]] Result<QList<RasterFile>> rastersOfPoints(const QStringList &texts,
                                                        const QStringList &vectors,
                                                        const PointOptions &options,
                                                        Progress &progress);
