#pragma once

#include "render/coveredpixels.h"
#include "render/trigonrows.h"

#include <cstdint>

/// The pixels of a triangle that fills one row or two, within one group of columns: what
/// fillLow() fills, in bits. Most triangles of a mesh are of that kind.
struct LowTrigon {
    /// Whether the corners lie so, in a picture of that last column and row.
    static bool fits(const ScreenBox &box, int xMax, int yMax)
    {
        return box.bottom - box.top <= 1 && box.left >= 0 && box.right <= xMax &&
               box.top >= 0 && box.bottom <= yMax &&
               CoveredPixels::inOneGroup(box.left, box.right);
    }

    /// Each row from the lowest to the highest of the corners on it, but that a triangle
    /// in one row has its first and last corner alone.
    LowTrigon(const ScreenCorner (&corners)[3], const ScreenBox &box)
        : flat(box.top == box.bottom)
    {
        for (const ScreenCorner &corner : corners)
            ends[corner.row - box.top] |= CoveredPixels::bitOf(corner.x);
        upper =
            flat ? CoveredPixels::bitOf(corners[0].x) | CoveredPixels::bitOf(corners[2].x)
                 : CoveredPixels::between(ends[0]);
        lower = flat ? 0 : CoveredPixels::between(ends[1]);
    }

    bool flat;
    std::uint64_t ends[2] = {}; // corners of the upper row and of the lower
    std::uint64_t upper, lower; // pixels
};
