#pragma once

#include "importers/matrices.h"

#include <QString>

#include <functional>

/// Shows a failure that Delaunay() words itself.
using DelaunayNotice = std::function<void(const QString &title, const QString &text)>;

/// Triangulates the first `numPoints` rows of `points` by incremental insertion
/// with the list of circumscribed spheres, in 2 or 3 dimensions.
///
/// `points` has `numPoints` + `dimension` + 1 rows: the last ones receive the
/// corners of the enclosing simplex. The filled rows are shifted by up to half a
/// hundred-thousandth of the extent, with the C library's generator, which is not
/// seeded here: a second call goes on with the sequence.
///
/// `triangles` is allocated with one row of point indices for each of the
/// `numTriangles` simplices, all of the same orientation. `maxSimplices` receives
/// the size of the tables, `maxUsed` the highest slot that was in use; when they
/// meet, simplices were dropped and the triangulation has holes.
///
/// Gives 0, or 1: neither 2 nor 3 dimensions; 2: no memory for the bounds, or too
/// many faces around one point; no memory for 3: the linear system, 4: faces,
/// 5: free slots, 6: simplices, 7: spheres, 8: triangles.
int Delaunay(CDoubleMatrix *points, std::int32_t numPoints, CIntMatrix *triangles,
             std::int32_t *numTriangles, int dimension, std::int32_t *maxSimplices,
             std::int32_t *maxUsed, const DelaunayNotice &notice = {});
