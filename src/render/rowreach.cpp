#include "render/rowreach.h"

#include "render/transformation.h"

#include <algorithm>
#include <cmath>

namespace {

// Pixels beyond the picture that still count as seen: a triangle touches a column more
// than its corners at most, and corners are truncated to whole pixels.
constexpr double Margin = 3.0;
// What a sum of some products may be off, as a share of their sizes: far more than it is.
constexpr double Rounding = 1e-9;

double farthest(double from, double to) { return std::max(std::abs(from), std::abs(to)); }

} // namespace

RowReach::RowReach(const Transformation &camera, QSize picture,
                   std::pair<double, double> heights)
    : m_everything(false), m_lowest(std::min(heights.first, heights.second)),
      m_highest(std::max(heights.first, heights.second))
{
    // A point falls on column X / w and row -Y / w where w is above 0; where it is not,
    // it cannot be drawn.
    const auto &m = camera.projection().m;
    const auto side = [&m](double ofX, double ofY, double ofW) {
        const auto factor = [&](int k) {
            return ofX * m[k][0] + ofY * m[k][1] + ofW * m[k][3];
        };
        const auto size = [&](int k) {
            return std::abs(ofX * m[k][0]) + std::abs(ofY * m[k][1]) +
                   std::abs(ofW * m[k][3]);
        };
        return Side{{factor(0), factor(1), factor(2), factor(3)},
                    {size(0), size(1), size(2), size(3)}};
    };
    m_sides = {side(1, 0, Margin), side(-1, 0, picture.width() + Margin),
               side(0, -1, Margin), side(0, 1, picture.height() + Margin), side(0, 0, 1)};
}

PointSpan RowReach::of(const double *x, int points, double south, double north) const
{
    PointSpan span = {0, points - 1};
    if (m_everything)
        return span;
    for (const Side &side : m_sides) {
        const PointSpan seen = within(side, x, points, south, north);
        span.first = std::max(span.first, seen.first);
        span.last = std::min(span.last, seen.last);
    }
    return span;
}

// Along a row the sum rises or falls, so that what is outside lies at one end of it. The
// comparison fails where the sum is no number: then nothing is left out.
PointSpan RowReach::within(const Side &side, const double *x, int points, double south,
                           double north) const
{
    const C4Vector &factor = side.factor;
    const C4Vector &size = side.size;
    const double rest = std::max(factor.y * south, factor.y * north) +
                        std::max(factor.z * m_lowest, factor.z * m_highest) + factor.w;
    const double terms = size.x * farthest(x[0], x[points - 1]) +
                         size.y * farthest(south, north) +
                         size.z * farthest(m_lowest, m_highest) + size.w;
    const double limit = -Rounding * terms;
    const auto isOutside = [&](double at) { return factor.x * at + rest < limit; };
    const double *const end = x + points;
    if (factor.x > 0.0) {
        const auto seen = std::partition_point(x, end, isOutside) - x;
        return {static_cast<int>(seen) - 1, points - 1};
    }
    const auto seen =
        std::partition_point(x, end, [&](double at) { return !isOutside(at); }) - x;
    return {0, static_cast<int>(seen)};
}
