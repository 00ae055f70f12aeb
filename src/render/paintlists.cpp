#include "render/paintlists.h"

#include <algorithm>

void PaintLists::begin(int width, int height, int shares)
{
    m_xMax = width - 1;
    m_yMax = height - 1;
    m_shares = shares;
    m_painter = nullptr;
    m_rows = {};
    m_listOf.resize(RowShare::stripOf(m_yMax) + 1);
    for (std::size_t strip = 0; strip < m_listOf.size(); ++strip)
        m_listOf[strip] = static_cast<std::uint8_t>(strip % shares);
    if (m_lists.size() < static_cast<std::size_t>(shares))
        m_lists.resize(shares);
    for (List &list : m_lists)
        list.entries.clear();
}

void PaintLists::begin(int width, int height, ScreenTrigon &painter)
{
    begin(width, height, 1);
    m_painter = &painter;
}

void PaintLists::add(ScreenCorner a, ScreenCorner b, ScreenCorner c, unsigned int number)
{
    const auto [top, bottom] = std::minmax({a.row, b.row, c.row});
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    // The ends of a row can lie a rounding beyond the corners, never a column.
    if (top > m_yMax || bottom < 0 || left > m_xMax + 1 || right < -1)
        return;
    const RowRange rows = {std::max(top, 0), std::min(bottom, m_yMax)};
    m_rows.unite(rows);
    if (m_painter)
        m_painter->Rechnen(a, b, c, number);
    else
        wait({a, b, c}, rows, number);
}

void PaintLists::wait(const ScreenCorner (&corners)[3], RowRange rows,
                      unsigned int number)
{
    const auto &[a, b, c] = corners;
    const auto low = [](int v) { return static_cast<std::int16_t>(v); };
    const Entry entry = {
        {low(a.x), low(b.x), low(c.x)}, {low(a.row), low(b.row), low(c.row)}, number};
    const int first = RowShare::stripOf(rows.first);
    const int last = RowShare::stripOf(rows.last);
    for (int strip = first; strip <= last && strip < first + m_shares; ++strip)
        m_lists[m_listOf[strip]].entries.push_back(entry);
}
