#include "render/paintlists.h"

#include "render/lowtrigon.h"

#include <algorithm>

namespace {

// Of what is higher on the screen something is mostly seen.
constexpr int MostRowsLookedAt = 4;

} // namespace

void PaintLists::begin(int width, int height, int shares)
{
    m_xMax = width - 1;
    m_yMax = height - 1;
    m_shares = shares;
    m_painter = nullptr;
    m_nearPainter = nullptr;
    m_covered = nullptr;
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

void PaintLists::begin(int width, int height, NearTrigon &painter,
                       const TriangleSource &source)
{
    begin(width, height, 1);
    m_nearPainter = &painter;
    m_source = &source;
}

bool PaintLists::hides(const ScreenBox &box) const
{
    if (isOutside(box))
        return true;
    if (!m_covered || box.bottom - box.top > MostRowsLookedAt)
        return false;
    // Over one row at most there is nothing to round.
    const int beyond = box.bottom - box.top > 1 ? 1 : 0;
    const int left = std::clamp(box.left - beyond, 0, m_xMax);
    const int right = std::clamp(box.right + beyond, 0, m_xMax);
    const int bottom = std::min(box.bottom, m_yMax);
    for (int row = std::max(box.top, 0); row <= bottom; ++row)
        if (!isCovered(row, left, right))
            return false;
    return true;
}

// Whether triangles of this list take all pixels of another one; it is listed if not.
bool PaintLists::isListedOver(const ScreenCorner (&corners)[3], const ScreenBox &box)
{
    if (!LowTrigon::fits(box, m_xMax, m_yMax))
        return false;
    const LowTrigon low(corners, box);
    const std::uint64_t freeUpper = m_listed.take(box.top, box.left, low.upper);
    const std::uint64_t freeLower = m_listed.take(box.bottom, box.left, low.lower);
    return (freeUpper | freeLower) == 0;
}

void PaintLists::add(ScreenCorner a, ScreenCorner b, ScreenCorner c, unsigned int number)
{
    const ScreenBox box = boxAround(a, b, c);
    if (m_nearPainter && !isOutside(box)) {
        m_nearPainter->paint(a, b, c, box, number, *m_source);
        return;
    }
    if (hides(box) || (m_covered && isListedOver({a, b, c}, box)))
        return;
    const RowRange rows = {std::max(box.top, 0), std::min(box.bottom, m_yMax)};
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
