#include "terrain/cellstrips.h"

namespace {

// The library's own copy. The compiler, which sees that it is of few bytes, would put an
// instruction in its place that takes longer to begin.
[[gnu::noinline]] void copyFloats(const float *from, int count, float *to)
{
    std::copy_n(from, count, to);
}

} // namespace

CellStrips::CellStrips(const QSize &given, bool isExchanged)
    : m_size(isExchanged ? given.transposed() : given), m_isExchanged(isExchanged),
      m_cells(std::make_unique_for_overwrite<float[]>(
          std::size_t((m_size.width() + Width - 1) / Width) *
          std::size_t(m_size.height()) * Width))
{
}

// Calls change(place here, place in the given rows) for all cells of those rows, which
// are columns here, in blocks that stay in the cache.
template <class Change>
void CellStrips::exchange(int first, int last, const Change &change) const
{
    constexpr int Block = 16; // floats of a line of the cache
    const int rows = m_size.height();
    for (int top = 0; top < rows; top += Block)
        for (int column = first; column < last; ++column) {
            const std::size_t given =
                std::size_t(column - first) * std::size_t(rows) + std::size_t(top);
            const std::size_t here = place(column, top);
            const auto end = std::size_t(std::min(Block, rows - top));
            for (std::size_t i = 0; i < end; ++i)
                change(here + i * Width, given + i);
        }
}

void CellStrips::copy(int column, int row, int count, float *to) const
{
    forParts(column, row, count,
             [to](const float *cells, int i, int n) { copyFloats(cells, n, to + i); });
}

void CellStrips::put(int first, int last, const float *rows)
{
    if (m_isExchanged)
        return exchange(first, last, [this, rows](std::size_t here, std::size_t given) {
            m_cells[here] = rows[given];
        });
    for (int y = first; y < last; ++y, rows += m_size.width())
        forParts(0, y, m_size.width(),
                 [rows](float *cells, int i, int n) { copyFloats(rows + i, n, cells); });
}

void CellStrips::take(int first, int last, float *rows) const
{
    if (m_isExchanged)
        return exchange(first, last, [this, rows](std::size_t here, std::size_t given) {
            rows[given] = m_cells[here];
        });
    for (int y = first; y < last; ++y, rows += m_size.width())
        copy(0, y, m_size.width(), rows);
}
