#pragma once

#include "importers/asciimesh.h"
#include "importers/delaunay.h"
#include "importers/importlosses.h"
#include "raster/elevationimage.h"

/// How an irregular text mesh becomes an image.
struct AsciiIrregularOptions {
    MeshBoundaries boundaries;
    int width = 0; ///< of the output, in pixels
    int height = 0;
    int skip = 0; ///< leading lines
    double zScale = 1.0;
    int nodalPointEstimate = 0; ///< no more points than this are stored
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

/// What the reading of an irregular text mesh found.
struct ScatteredMesh {
    ScatteredPoints scattered; ///< those within the boundaries, in the file's order
    qint64 pointsRead = 0;
    ImportLosses losses; ///< of the points within the boundaries; there are no voids
    QStringList rows;    ///< complaints
};

/// Reads the points within the boundaries. Fails where memory is short for as many as
/// were estimated. Steps by bytes.
[[nodiscard]] Result<ScatteredMesh>
readScatteredPoints(QIODevice &in, const AsciiIrregularOptions &options,
                    Progress &progress);

/// Triangulates the points, which moves them a little, and fills the triangles into a
/// new image of the options' size. Steps by points.
[[nodiscard]] DelaunayResult<ElevationImage>
fillScatteredPoints(ScatteredPoints &scattered, const AsciiIrregularOptions &options,
                    Progress &progress);

/// The rows that tell what a scan found; none where nothing is amiss.
[[nodiscard]] QStringList irregularScanRows(const MeshScan &scan, int skip);

/// Tells the code of a triangulation that failed.
[[nodiscard]] QString triangulationFailedText(int code);
