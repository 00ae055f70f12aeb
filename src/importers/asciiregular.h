#pragma once

#include "importers/asciimesh.h"
#include "importers/importlosses.h"
#include "raster/elevationimage.h"

/// How a regular text mesh becomes an image.
struct AsciiRegularOptions {
    MeshBoundaries boundaries;
    int width = 0; ///< of the output, in pixels
    int height = 0;
    int skip = 0; ///< leading lines
    double zScale = 1.0;
};

/// What a conversion of a regular text mesh made.
struct AsciiRegularMesh {
    ElevationImage image;
    bool hasPoints = false; ///< whether there is anything to write
    qint64 pointsRead = 0;
    qint64 pointsUsed = 0; ///< those within the boundaries
    ImportLosses losses;   ///< of the points used; a mesh of text has no voids
    QStringList rows;      ///< complaints
};

/// The size at which each point of an integer grid meets one pixel, for a spin box
/// that holds 1 to `highest`.
[[nodiscard]] int proposedSide(double lowestCoordinate, double highestCoordinate,
                               int highest);

/// Puts each point of a text mesh onto the nearest pixel of a new image; pixels
/// that no point meets hold 0. Steps by bytes.
[[nodiscard]] Result<AsciiRegularMesh>
convertAsciiRegular(QIODevice &in, const AsciiRegularOptions &options,
                    Progress &progress);
