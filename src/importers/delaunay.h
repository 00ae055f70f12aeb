#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "importers/matrices.h"

#include <QString>

/// Why there is no triangulation. Codes: 1: neither 2 nor 3 dimensions; 2: no memory for
/// the bounds, or too many faces around one point; no memory for 3: the linear system, 4:
/// faces, 5: free slots, 6: simplices, 7: spheres, 8: triangles. Only some have a text of
/// their own.
struct DelaunayFailure : Failure {
    int code = 0;
};

/// As Result, with the code of a triangulation that failed.
template <typename T> using DelaunayResult = tl::expected<T, DelaunayFailure>;

/// What a triangulation made.
struct DelaunayTriangles {
    CIntMatrix corners;            ///< a row of point indices for each simplex
    std::int32_t count = 0;        ///< of simplices
    std::int32_t maxSimplices = 0; ///< size of the tables
    std::int32_t maxUsed = 0;      ///< highest slot of them that was in use
};

/// Triangulates the first `numPoints` rows of `points` by incremental insertion
/// with the list of circumscribed spheres, in 2 or 3 dimensions.
///
/// `points` has `numPoints` + `dimension` + 1 rows: the last ones receive the
/// corners of the enclosing simplex. The filled rows are shifted by up to half a
/// hundred-thousandth of the extent, with the C library's generator, which is not
/// seeded here: a second call goes on with the sequence.
///
/// All simplices have the same orientation. When `maxUsed` meets `maxSimplices`,
/// simplices were dropped and the triangulation has holes. Steps by points.
[[nodiscard]] DelaunayResult<DelaunayTriangles> Delaunay(CDoubleMatrix &points,
                                                         std::int32_t numPoints,
                                                         int dimension,
                                                         Progress &progress);
