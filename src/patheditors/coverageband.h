#pragma once

#include <QtGlobal>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Steps of the grid along the side of a pixel: outlines are counted in 256ths.
constexpr int GridSteps = 256;

/// The pixel, and the step in it, of a place on the grid.
constexpr int pixelOf(int place) { return place >> 8; }
constexpr int stepOf(int place) { return place & (GridSteps - 1); }

/// An edge of an outline, in steps of the grid.
struct OutlineEdge {
    qint32 x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

/// Pixels of a row from begin to before end.
struct PixelRange {
    int begin = 0, end = 0;
};

/// A few rows of pixels, in which the edges of closed outlines count how much of each
/// pixel lies inside.
///
/// Grid and roundings are those of the painter's own antialiasing, so that the pictures
/// are the same to the bit. But the count of a pixel has its place, where the painter
/// searches for it among all others of its row, and what an edge does outside of the
/// rows is passed over in one step.
class CoverageBand {
public:
    /// Rows: few, so that a band of a wide screen stays in the processor's own memory.
    static constexpr int Height = 8;

    /// Pixels from left to left + width - 1.
    CoverageBand(int left, int width);

    /// Moves the empty band to the rows from top on.
    void setTop(int top) { m_top = top; }
    void add(const OutlineEdge &edge);

    /// Calls span(x, length, coverage) from left to right for what lies inside in a row,
    /// coverage in 255ths, and empties the row. Gives the range that holds the spans.
    template <typename Span> PixelRange takeRow(int row, Span span);

private:
    /// What the edges do in one pixel, in steps of the grid.
    struct Cell {
        qint64 area = 0;  // twice what lies left of the edges in the pixel
        qint64 cover = 0; // height that they cross there
    };

    void addRun(int row, int x0, int y0, int x1, int y1);
    void addCell(std::size_t line, int column, int area, int cover);

    int m_left;
    int m_width;
    int m_top = 0;
    // Each row begins with a cell for all that lies left of the band.
    std::size_t m_columns;
    std::size_t m_words;
    std::vector<Cell> m_cells;
    std::vector<std::uint64_t> m_touched; // a bit for each cell
};

template <typename Span> PixelRange CoverageBand::takeRow(int row, Span span)
{
    const auto coverage = [](qint64 area) {
        const qint64 part = area >> 9; // the area of a pixel, twice, is 512 * 256
        return static_cast<int>(std::min<qint64>(part < 0 ? -part : part, 255));
    };
    PixelRange range;
    const auto cut = [&](int x, int length, int part) {
        if (length <= 0 || part == 0)
            return;
        span(x, length, part);
        if (range.begin == range.end)
            range.begin = x;
        range.end = x + length;
    };
    const std::size_t line = static_cast<std::size_t>(row - m_top);
    qint64 cover = 0; // of all edges so far
    int next = m_left;
    for (std::size_t word = 0; word < m_words; ++word) {
        std::uint64_t &bits = m_touched[line * m_words + word];
        for (; bits != 0; bits &= bits - 1) {
            const std::size_t column =
                word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
            const int x = m_left + static_cast<int>(column) - 1;
            Cell &cell = m_cells[line * m_columns + column];
            cut(next, x - next, coverage(cover * 2 * GridSteps));
            cover += cell.cover;
            if (column > 0)
                cut(x, 1, coverage(cover * 2 * GridSteps - cell.area));
            cell = {};
            next = x + 1;
        }
    }
    cut(next, m_left + m_width - next, coverage(cover * 2 * GridSteps));
    return range;
}
