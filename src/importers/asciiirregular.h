#pragma once

#include "importers/asciimesh.h"
#include "importers/delaunay.h"

class ElevationImage;

struct AsciiIrregularOptions {
    MeshBoundaries boundaries;
    int width = 0; // of the output, in pixels
    int height = 0;
    int skip = 0; // leading lines
    double zScale = 1.0;
    int nodalPointEstimate = 0; // no more points than this are stored
};

/// Points in pixels, row downward, with their elevations. The matrix has three
/// rows more than points, for the triangulation.
struct ScatteredPoints {
    CDoubleMatrix points;
    CDoubleVector z;
    int count = 0;

    /// Room for the estimated number of points.
    [[nodiscard]] bool allocate(int estimate);
};

/// Reads the points within the boundaries, in the order of the file, into storage
/// allocated for the estimate. False if there was none. `rows` receives the
/// complaints either way.
[[nodiscard]] bool readScatteredPoints(QIODevice &in,
                                       const AsciiIrregularOptions &options,
                                       ScatteredPoints &out, QStringList *rows);

/// Triangulates the points and fills the triangles into a new image of the
/// options' size; 0, or the error code of Delaunay().
[[nodiscard]] int fillScatteredPoints(ScatteredPoints &scattered,
                                      const AsciiIrregularOptions &options,
                                      ElevationImage &image,
                                      const DelaunayNotice &notice);
