#pragma once

#include "terrain/horizonlines.h"
#include "terrain/rowwork.h"

#include <algorithm>
#include <cmath>
#include <utility>

class WorkerPool;

/// A grid and the same with rows and columns exchanged: lines of every direction run
/// along the rows of one of the two.
struct Direction {
    double slant = 0.0; ///< rows for each column of the grid that it runs along
    double step = 1.0;  ///< metres for each column
    bool towardHigher = true;
    bool isTransposed = false; ///< it runs along the columns
};

/// The way to an azimuth, in radians clockwise from north, over cells in metres.
[[nodiscard]] Direction directionTo(double azimuth, double cellX, double cellY);

/// The same cells, rows and columns exchanged; false if it was stopped.
[[nodiscard]] bool transpose(const std::vector<float> &from, const QSize &size,
                             std::vector<float> &to, WorkerPool &pool,
                             const Stretch &stretch);

/// Finds the horizon of every cell in one direction along the rows of `heights`.
/// take(const HorizonLines::Work &) gets cells: in the columns from `from` until `to`
/// that of `row`, where that is not negative, with its `horizon`; each cell once.
template <class Take>
[[nodiscard]] bool sweepHorizon(const Heights &heights, const Direction &direction,
                                WorkerPool &pool, const Stretch &stretch, Take &&take)
{
    const HorizonLines lines(heights, direction.slant, direction.step,
                             direction.towardHigher);
    // A stop waits for one piece, and each piece makes one line twice.
    constexpr int CellsOfPiece = 1 << 18;
    const int piece = std::clamp(CellsOfPiece / heights.size.width(), 1, 64);
    return workOnPieces(pool, lines.count(), piece, stretch, [&](int first, int last) {
        HorizonLines::Work work(heights);
        lines.horizonOf(lines.first() + first, work.line, work);
        for (int k = lines.first() + first; k < lines.first() + last; ++k) {
            lines.horizonOf(k + 1, work.next, work);
            lines.between(k, work);
            take(std::as_const(work));
            std::swap(work.line, work.next);
        }
    });
}
