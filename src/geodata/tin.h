#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/points.h"

/// A surface between the points of a vector file.
struct VectorSurface {
    PointSheet sheet;
    QString crs; ///< well-known text; empty where the file has none
};

/// The heights of the points and lines of a vector file (GPX, shape, GeoJSON, KML) as a
/// surface of triangles, within edges of at most `longestEdge` metres. Fails where too
/// few of them have heights.
[[nodiscard]] Result<VectorSurface>
surfaceOfVectors(const QString &file, double longestEdge, Progress &progress);
