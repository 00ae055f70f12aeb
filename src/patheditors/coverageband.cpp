#include "patheditors/coverageband.h"

namespace {

// The quotient, rounded down.
qint64 floorOf(qint64 dividend, qint64 divisor)
{
    const qint64 quotient = dividend / divisor;
    return quotient * divisor > dividend ? quotient - 1 : quotient;
}

// How far a line leads before and behind the pixels that were asked for.
struct Passed {
    int before = 0, behind = 0;
};

// Cuts a line from (a0, b0) to (a1, b1) where a passes from pixel to pixel, and calls
// part(pixel, b of entry, step of entry, b of exit, step of exit) for the pixels from
// first to last that it crosses, the steps being those of a in the pixel.
template <typename Part>
Passed cutLine(int a0, int b0, int a1, int b1, int first, int last, Part part)
{
    const int sign = a1 > a0 ? 1 : -1;
    const int from = pixelOf(a0);
    const int count = sign * (pixelOf(a1) - from);
    const int begin = std::max(0, sign > 0 ? first - from : from - last);
    const int end = std::min(count, sign > 0 ? last - from : from - first);
    if (begin > count)
        return {b1 - b0, 0};
    if (begin > end)
        return {0, b1 - b0};
    const qint64 length = sign * (qint64(a1) - a0);
    const qint64 rise = qint64(b1) - b0;
    const int offset = sign > 0 ? GridSteps - stepOf(a0) : stepOf(a0);
    // b where the line leaves the pixel that is the k-th on its way.
    const auto exit = [&](int k) {
        if (k == count)
            return b1;
        const qint64 way = offset + qint64(k) * GridSteps;
        return b0 + static_cast<int>(floorOf(way * rise, length));
    };
    const int near = sign > 0 ? 0 : GridSteps;
    const int entered = begin == 0 ? b0 : exit(begin - 1);
    int b = entered;
    for (int k = begin; k <= end; ++k) {
        const int left = exit(k);
        part(from + sign * k, b, k == 0 ? stepOf(a0) : near, left,
             k == count ? stepOf(a1) : GridSteps - near);
        b = left;
    }
    return {entered - b0, b1 - b};
}

} // namespace

CoverageBand::CoverageBand(int left, int width)
    : m_left(left), m_width(width), m_columns(static_cast<std::size_t>(width) + 1),
      m_words(m_columns / 64 + 1)
{
    m_cells.resize(Height * m_columns);
    m_touched.resize(Height * m_words);
}

inline void CoverageBand::addCell(std::size_t line, int column, int area, int cover)
{
    const std::size_t at = static_cast<std::size_t>(column);
    Cell &cell = m_cells[line * m_columns + at];
    cell.area += area;
    cell.cover += cover;
    m_touched[line * m_words + at / 64] |= std::uint64_t(1) << (at % 64);
}

void CoverageBand::add(const OutlineEdge &edge)
{
    cutLine(
        edge.y0, edge.x0, edge.y1, edge.x1, m_top, m_top + Height - 1,
        [this](int row, int x0, int y0, int x1, int y1) { addRun(row, x0, y0, x1, y1); });
}

// The part of an edge in one row; y0 and y1 count from the row's upper side.
void CoverageBand::addRun(int row, int x0, int y0, int x1, int y1)
{
    if (y0 == y1)
        return;
    const std::size_t line = static_cast<std::size_t>(row - m_top);
    const Passed passed = cutLine(x0, y0, x1, y1, m_left, m_left + m_width - 1,
                                  [&](int column, int from, int left, int to, int right) {
                                      addCell(line, column - m_left + 1,
                                              (left + right) * (to - from), to - from);
                                  });
    // An edge left of the band decides what is inside of it, one right of it nothing.
    const int outside = x1 > x0 ? passed.before : passed.behind;
    if (outside != 0)
        addCell(line, 0, 0, outside);
}
