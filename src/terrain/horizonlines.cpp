// Horizons along lines in time that grows with their length alone: the ground that can be
// seen from anywhere further on is the upper convex hull of the ground behind, after
// Timonen and Westerholm (2010), "Scalable Height Field Self-Shadowing".

#include "terrain/horizonlines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace {

constexpr float NoGround = -1e30f; // tangent of a horizon of nothing
constexpr float OffGrid = std::numeric_limits<float>::quiet_NaN();
constexpr double One = 4294967296.0; // row 1, see rowOf()

int wholeRow(qint64 row) { return static_cast<int>(row >> 32); }

// How far it lies below its whole row, 0 to 1.
float shareOf(qint64 row)
{
    return static_cast<float>(static_cast<quint32>(row)) * static_cast<float>(1.0 / One);
}

float orOther(float horizon, float other)
{
    return horizon == NoGround ? other : horizon;
}

} // namespace

HorizonLines::Work::Work(const Heights &heights)
    : height(std::size_t(heights.size.width())), line(height.size()), next(height.size()),
      horizon(height.size()), row(height.size()), hullHeight(height.size()),
      hullColumn(height.size())
{
}

HorizonLines::HorizonLines(const Heights &heights, double slant, double step,
                           bool towardHigher)
    : m_heights(heights), m_slant(std::llround(slant * One)),
      m_perStep(static_cast<float>(1.0 / step)), m_towardHigher(towardHigher)
{
    const qint64 shift = -m_slant * (heights.size.width() - 1);
    m_first = wholeRow(std::min<qint64>(0, shift));
    const qint64 last = rowOf(heights.size.height() - 1, 0) + std::max<qint64>(0, shift);
    m_count = wholeRow(last) - m_first + 1;
}

// Columns in which a line lies in the grid or less than a row beside it, and perhaps one
// more at either end.
std::pair<int, int> HorizonLines::columnsOf(int k) const
{
    const int width = m_heights.size.width();
    if (std::abs(m_slant) < qint64(One) / width)
        return {0, width};
    const double slant = double(m_slant) / One;
    const double enters = (-1.0 - k) / slant;
    const double leaves = (m_heights.size.height() - k) / slant;
    const double from = std::min(enters, leaves) - 1.0;
    const double to = std::max(enters, leaves) + 2.0;
    return {static_cast<int>(std::clamp(from, 0.0, double(width))),
            static_cast<int>(std::clamp(to, 0.0, double(width)))};
}

// Lines go on for less than a row beyond the first and the last, so that all cells lie
// between two of them; the ground there is that of the edge.
void HorizonLines::readHeights(int k, Work &work) const
{
    const int rows = m_heights.size.height();
    const auto [from, to] = columnsOf(k);
    qint64 y = rowOf(k, from);
    for (int x = from; x < to; ++x, y += m_slant) {
        const int row = wholeRow(y);
        if (row < -1 || row >= rows) {
            work.height[std::size_t(x)] = OffGrid;
            continue;
        }
        const float upper = m_heights.row(std::max(row, 0))[x];
        const float lower = m_heights.row(std::min(row + 1, rows - 1))[x];
        work.height[std::size_t(x)] = upper + shareOf(y) * (lower - upper);
    }
}

void HorizonLines::horizonOf(int k, std::vector<float> &horizon, Work &work) const
{
    readHeights(k, work);
    const auto [from, to] = columnsOf(k);
    const float *const height = work.height.data();
    float *const hullHeight = work.hullHeight.data();
    int *const hullColumn = work.hullColumn.data();
    int hull = 0; // points of the hull, the last the nearest
    for (int i = 0; i < to - from; ++i) {
        const int x = m_towardHigher ? to - 1 - i : from + i;
        const float here = height[x];
        if (std::isnan(here))
            continue;
        // A point below the line to the one behind it is never seen again.
        while (hull > 1 &&
               (hullHeight[hull - 1] - here) * float(i - hullColumn[hull - 2]) <=
                   (hullHeight[hull - 2] - here) * float(i - hullColumn[hull - 1]))
            --hull;
        horizon[std::size_t(x)] = hull == 0 ? NoGround
                                            : (hullHeight[hull - 1] - here) * m_perStep /
                                                  float(i - hullColumn[hull - 1]);
        hullHeight[hull] = here;
        hullColumn[hull++] = i;
    }
}

void HorizonLines::between(int k, Work &work) const
{
    const int rows = m_heights.size.height();
    std::tie(work.from, work.to) = columnsOf(k);
    qint64 y = rowOf(k, work.from);
    for (int x = work.from; x < work.to; ++x, y += m_slant) {
        const float share = shareOf(y);
        const int cell = wholeRow(y) + (share > 0.0f ? 1 : 0);
        const bool isThere = cell >= 0 && cell < rows;
        work.row[std::size_t(x)] = isThere ? cell : -1;
        if (!isThere)
            continue;
        // Where one line has just entered the grid there is only the other's horizon.
        const float line = work.line[std::size_t(x)];
        const float next = work.next[std::size_t(x)];
        const float upper = orOther(line, next);
        const float lower = share > 0.0f ? orOther(next, line) : upper;
        work.horizon[std::size_t(x)] = lower + share * (upper - lower);
    }
}
