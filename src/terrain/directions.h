#pragma once

#include "terrain/heights.h"
#include "terrain/horizonlines.h"
#include "terrain/rowwork.h"

#include <utility>

class WorkerPool;

/// A grid and the same with rows and columns exchanged: lines of every direction run
/// along the columns of one of the two.
struct Direction {
    double slant = 0.0; ///< columns for each row of the grid that it runs down or up
    double step = 1.0;  ///< metres for each row
    bool towardHigher = true;
    bool isExchanged = false; ///< it runs along the rows
};

/// The way to an azimuth, in radians clockwise from north, over cells in metres.
[[nodiscard]] Direction directionTo(double azimuth, double cellX, double cellY);

/// Puts all heights into strips; false if it was stopped.
[[nodiscard]] bool putHeights(const Heights &heights, CellStrips &strips,
                              WorkerPool &pool, const Stretch &stretch);

/// Finds the horizon of every cell in one direction along the columns of `heights`.
/// take(const HorizonLines::Walk &) gets runs of cells of one row, each cell once.
template <class Take>
[[nodiscard]] bool sweepHorizon(const CellStrips &heights, const Direction &direction,
                                WorkerPool &pool, const Stretch &stretch, Take &&take)
{
    const HorizonLines lines(heights, direction.slant, direction.step,
                             direction.towardHigher);
    return workOnPieces(pool, lines.blocks(), 1, stretch, [&](int first, int last) {
        for (int block = first; block < last; ++block) {
            HorizonLines::Walk walk(lines, block);
            while (walk.next())
                take(std::as_const(walk));
        }
    });
}
