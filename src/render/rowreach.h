#pragma once

#include "base/vectors.h"

#include <QSize>

#include <array>
#include <utility>
#include <vector>

class Transformation;

/// Points of a row of the mesh, from first to last; none where last is below first.
struct PointSpan {
    int first = 0;
    int last = -1;

    [[nodiscard]] int count() const { return last - first + 1; }
    [[nodiscard]] bool holds(PointSpan other) const
    {
        return other.count() <= 0 || (first <= other.first && other.last <= last);
    }
};

/// Tells which part of a row of the mesh can come into the picture at all, so that the
/// rest of the row is never computed.
///
/// The picture, some pixels wider on each side, bounds a pyramid of planes before the
/// observer. What lies on the outer side of one of them with all its corners paints
/// nothing. The answer errs on the side of too much: roundings are allowed for.
class RowReach {
public:
    /// All of every row.
    RowReach() = default;
    /// What this camera sees in a picture of that size, of terrain whose heights are
    /// between the two, in world units. Borrows nothing.
    RowReach(const Transformation &camera, QSize picture,
             std::pair<double, double> heights);

    /// The points that are corners of cells that may be seen, of rows whose y is between
    /// the two. `x` are the positions of the points, rising, `points` of them. A greater
    /// stretch of y never has fewer points.
    [[nodiscard]] PointSpan of(const double *x, int points, double south,
                               double north) const;

private:
    // A side of the picture: the sum of x, y, z and 1, each times its factor, is below 0
    // beyond it. The sizes are what the factors were made of, without signs: they tell
    // how far the sum may be off.
    struct Side {
        C4Vector factor, size;
    };
    [[nodiscard]] PointSpan within(const Side &side, const double *x, int points,
                                   double south, double north) const;

    bool m_everything = true;
    std::array<Side, 5> m_sides; // left, right, top, bottom, behind the observer
    double m_lowest = 0.0, m_highest = 0.0;
};
