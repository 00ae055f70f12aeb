#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/pointreader.h"

#include <array>
#include <vector>

/// Metres of a unit of x and of y of some coordinates.
struct PlaneScale {
    double x = 1.0;
    double y = 1.0;
};

/// Metres of a degree of longitude and latitude at some latitude (WGS 84).
[[nodiscard]] PlaneScale metresOfDegrees(double latitude);

/// Points with the triangles between them.
struct TerrainMesh {
    std::vector<GroundPoint> points; ///< no two at one place
    std::vector<std::array<qint32, 3>> triangles;
    PlaneScale scale;
};

/// The Delaunay triangulation of points, by Boost's sweep line (the triangles are dual to
/// a Voronoi diagram), which is exact on coordinates of 31 bits of the extent. Points at
/// one place become one of their mean height; those without a height are left out. Fails
/// on fewer than three places, and on places on one line; `name` begins the sentences.
[[nodiscard]] Result<TerrainMesh> triangulated(std::vector<GroundPoint> points,
                                               const PlaneScale &scale,
                                               const QString &name, Progress &progress);

/// Memory that the triangulation of so many points takes, bytes.
[[nodiscard]] qint64 meshMemory(qint64 points);
