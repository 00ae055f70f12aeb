// Horizons along lines in time that grows with their length alone: the ground that can be
// seen from anywhere further on is the upper convex hull of the ground behind, after
// Timonen and Westerholm (2010), "Scalable Height Field Self-Shadowing".

#include "terrain/horizonlines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A point before the first one of a line: what stands before it is no ground, and no
// other point is ever hidden by it.
constexpr float DepthOfNothing = -1e30f;
constexpr float NoGround = -1e20f; // tangent that only such a point has
constexpr float NeverHidden = std::numeric_limits<float>::quiet_NaN();
constexpr double One = 4294967296.0; // column 1, see columnOf()

int wholeColumn(qint64 column) { return static_cast<int>(column >> 32); }

// How far it lies beyond its whole column, 0 to 1.
float shareOf(qint64 column)
{
    return static_cast<float>(static_cast<quint32>(column)) *
           static_cast<float>(1.0 / One);
}

float orOther(float horizon, float other) { return horizon < NoGround ? other : horizon; }

} // namespace

HorizonLines::HorizonLines(const CellStrips &heights, double slant, double step,
                           bool towardHigher)
    : m_heights(heights), m_slant(std::llround(slant * One)),
      m_towardHigher(towardHigher), m_perSteps(std::size_t(heights.size().height()) + 1)
{
    const qint64 shift = -m_slant * (heights.size().height() - 1);
    m_first = wholeColumn(std::min<qint64>(0, shift));
    const qint64 last =
        columnOf(heights.size().width() - 1, 0) + std::max<qint64>(0, shift);
    m_count = wholeColumn(last) - m_first + 1;
    for (std::size_t i = 1; i < m_perSteps.size(); ++i)
        m_perSteps[i] = static_cast<float>(1.0 / (step * double(i)));
}

// Rows in which one of the lines lies in the grid or less than a column beside it, and
// perhaps some more at either end.
std::pair<int, int> HorizonLines::rowsOf(int first, int last) const
{
    const int rows = m_heights.size().height();
    if (std::abs(m_slant) < qint64(One) / rows)
        return {0, rows};
    const double slant = double(m_slant) / One;
    const double west = -1.0 - last; // of the lines' columns in row 0
    const double east = double(m_heights.size().width()) - first;
    const double from = std::min(west / slant, east / slant) - 1.0;
    const double to = std::max(west / slant, east / slant) + 2.0;
    return {static_cast<int>(std::clamp(from, 0.0, double(rows))),
            static_cast<int>(std::clamp(to, 0.0, double(rows)))};
}

HorizonLines::Walk::Walk(const HorizonLines &lines, int block)
    : m_lines(lines), m_firstLine(lines.m_first + block * LinesOfBlock)
{
    const auto [from, to] = lines.rowsOf(m_firstLine, m_firstLine + LinesOfBlock);
    m_firstRow = from;
    m_steps = std::max(to - from, 0);
    // Most of it is never touched: a hull is much shorter than its line.
    const std::size_t longest = std::size_t(m_steps) + 1;
    m_points = std::make_unique_for_overwrite<Point[]>(longest * Lines);
    for (std::size_t k = 0; k < Lines; ++k) {
        m_nearest[k] = m_points.get() + k;
        *m_nearest[k] = {DepthOfNothing, NeverHidden, -1};
    }
    m_last.fill(DepthOfNothing);
    m_line.fill(NeverHidden);
}

bool HorizonLines::Walk::next()
{
    const int columns = m_lines.m_heights.size().width();
    while (m_step < m_steps) {
        m_row = m_lines.m_towardHigher ? m_firstRow + m_steps - 1 - m_step
                                       : m_firstRow + m_step;
        const qint64 place = m_lines.columnOf(m_firstLine, m_row);
        const int column = wholeColumn(place);
        // Lines go on for less than a column beyond the first and the last, so that all
        // cells lie between two of them.
        const int from = std::clamp(-1 - column, 0, int(Lines));
        const int to = std::clamp(columns - column, 0, int(Lines));
        if (from < to) {
            readHeights(column, shareOf(place));
            followLines(from, to);
            mixCells(column, shareOf(place));
        }
        ++m_step;
        if (from < to && m_cells > 0)
            return true;
    }
    return false;
}

// The ground beside the grid is that of its edge.
void HorizonLines::Walk::readHeights(int column, float share)
{
    const CellStrips &cells = m_lines.m_heights;
    const int last = cells.size().width() - 1;
    const int from = std::clamp(column, 0, last);
    const int to = std::clamp(column + Lines, 0, last);
    float *const ground = m_ground.data();
    const int before = from - column;
    const int behind = column + Lines - to;
    cells.copy(from, m_row, to - from + 1, ground + before);
    std::fill_n(ground, before, ground[before]);
    std::fill_n(ground + (to - column) + 1, behind, ground[to - column]);
    for (std::size_t k = 0; k < Lines; ++k)
        m_height[k] = m_ground[k] + share * (m_ground[k + 1] - m_ground[k]);
}

// Whether a point is hidden nobody can foresee on rough ground, so no branch depends on
// it: lines are gone over again, fewer and fewer of them, instead of one after the other.
void HorizonLines::Walk::followLines(int from, int to)
{
    std::array<int, Lines> behind; // lines whose horizon lies behind the last row
    int count = 0;
    const float perStep = m_lines.m_perSteps[1];
    for (int line = from; line < to; ++line) {
        const auto k = std::size_t(line);
        const float horizon = (m_last[k] - m_height[k]) * perStep;
        // A point below the line to the one behind it is never seen again.
        const bool isHidden = horizon <= m_line[k];
        Point *const nearest = m_nearest[k];
        nearest[Lines] = {m_last[k], m_line[k], m_step - 1};
        m_nearest[k] = nearest + (isHidden ? 0 : Lines);
        behind[std::size_t(count)] = line;
        count += isHidden ? 1 : 0;
        m_line[k] = horizon;
        m_last[k] = m_height[k];
    }
    const float *const perSteps = m_lines.m_perSteps.data() + m_step;
    while (count > 0) {
        int rest = 0;
        for (int i = 0; i < count; ++i) {
            const int line = behind[std::size_t(i)];
            const auto k = std::size_t(line);
            Point *const nearest = m_nearest[k];
            const float horizon =
                (nearest->height - m_height[k]) * perSteps[-nearest->step];
            const bool isHidden = horizon <= nearest->horizon;
            m_nearest[k] = nearest - (isHidden ? Lines : 0);
            m_line[k] = horizon;
            behind[std::size_t(rest)] = line;
            rest += isHidden ? 1 : 0;
        }
        count = rest;
    }
}

void HorizonLines::Walk::mixCells(int column, float share)
{
    // A cell on a line is only its own; others lie between a line and the next.
    const int beyond = share > 0.0f ? 1 : 0;
    const int columns = m_lines.m_heights.size().width();
    const int from = std::clamp(-column - beyond, 0, LinesOfBlock);
    const int to = std::clamp(columns - column - beyond, 0, LinesOfBlock);
    m_column = column + from + beyond;
    m_cells = std::max(to - from, 0);
    const float *const line = m_line.data() + from;
    if (beyond == 0) {
        std::copy_n(line, m_cells, m_horizon.data());
        return;
    }
    for (int i = 0; i < m_cells; ++i) {
        // Where one line has just entered the grid there is only the other's horizon.
        const float upper = orOther(line[i], line[i + 1]);
        const float lower = orOther(line[i + 1], line[i]);
        m_horizon[std::size_t(i)] = lower + share * (upper - lower);
    }
}
