#pragma once

#include "terrain/geogrid.h"
#include "terrain/heights.h"
#include "terrain/terrainmesh.h"

/// The cells of a surface: where they are, and how many.
struct SurfaceGrid {
    GeoTransform transform{};
    QSize size;
};

/// Cells about as dense as the points, square in metres, of a round size, aligned to
/// multiples of it, at most `mostCells` a side.
[[nodiscard]] SurfaceGrid proposedGrid(const TerrainMesh &mesh, int mostCells);

/// The heights of the triangles in the middles of the cells that they cover; NaN outside
/// of all. Triangles with an edge longer than `longestEdge`, metres, are left out.
[[nodiscard]] Result<Heights> rasterized(const TerrainMesh &mesh, const SurfaceGrid &grid,
                                         double longestEdge, Progress &progress);
