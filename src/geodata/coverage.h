#pragma once

#include <QList>
#include <QRect>

/// How many cells of a grid are covered by more than one of some rectangles, and by none.
struct Coverage {
    qint64 overlaps = 0;
    qint64 gaps = 0;
};

/// Counts without looking at single cells: the work grows with the square of the number
/// of rectangles at most.
[[nodiscard]] Coverage coverageOf(const QList<QRect> &rectangles, const QSize &grid);
