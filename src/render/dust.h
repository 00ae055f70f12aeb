#pragma once

#include "base/vectors.h"

#include <cmath>
#include <utility>

/// The dust of a frame: what share of the land's own light it leaves, by distance.
class Dust {
public:
    Dust() = default;
    /// Distances are measured from the observer, in dust ranges; to points between these
    /// heights.
    Dust(const C4Vector &observer, double range, std::pair<double, double> heights)
        : m_observer(observer), m_range(range), m_heights(heights),
          m_surelyNear(range > 0.0 ? squareOf(FarthestRange * range * (1 - 1e-9)) : -1.0)
    {
    }

    /// Whether hides() is false for all points of a row. It may be where this is false.
    [[nodiscard]] bool surelyShows(double x0, double x1, double y) const
    {
        const double x = farther(m_observer.x, x0, x1);
        const double z = farther(m_observer.z, m_heights.first, m_heights.second);
        return squaredDistance(x, y, z) < m_surelyNear;
    }

    /// Whether a point is so far that its cell is not drawn at all.
    [[nodiscard]] bool hides(double x, double y, double z) const
    {
        return !(squaredDistance(x, y, z) < m_surelyNear) &&
               distance(x, y, z) >= FarthestRange;
    }

    /// The share of dust in the colour of a point, 0 to 1.
    [[nodiscard]] double share(double x, double y, double z) const
    {
        return 1 - std::exp(-distance(x, y, z));
    }

private:
    // Beyond this many dust ranges nothing is seen.
    static constexpr double FarthestRange = 7.0;

    static double squareOf(double v) { return v * v; }
    static double farther(double from, double a, double b)
    {
        return std::abs(a - from) > std::abs(b - from) ? a : b;
    }

    [[nodiscard]] double squaredDistance(double x, double y, double z) const
    {
        const double dx = m_observer.x - x;
        const double dy = m_observer.y - y;
        const double dz = m_observer.z - z;
        return dx * dx + dy * dy + dz * dz;
    }

    // In dust ranges.
    [[nodiscard]] double distance(double x, double y, double z) const
    {
        return std::sqrt(squaredDistance(x, y, z)) / m_range;
    }

    C4Vector m_observer;
    double m_range = 1.0;
    std::pair<double, double> m_heights;
    // A little less than the limit, for the rounding of the exact test; squared.
    double m_surelyNear = -1.0;
};
