#pragma once

#include "importers/asciimesh.h"

class ElevationImage;

struct AsciiRegularOptions {
    MeshBoundaries boundaries;
    int width = 0; // of the output, in pixels
    int height = 0;
    int skip = 0; // leading lines
    double zScale = 1.0;
};

/// The size at which each point of an integer grid meets one pixel, for a spin box
/// that holds 1 to `highest`.
[[nodiscard]] int proposedSide(double lowestCoordinate, double highestCoordinate,
                               int highest);

/// Puts each point of a text mesh onto the nearest pixel of a new image; pixels
/// that no point meets hold 0. False if there was no point within the boundaries.
/// `rows` receives the complaints either way.
[[nodiscard]] bool convertAsciiRegular(QIODevice &in, const AsciiRegularOptions &options,
                                       ElevationImage &image, QStringList *rows);
