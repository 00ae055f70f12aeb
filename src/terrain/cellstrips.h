#pragma once

#include <QSize>

#include <algorithm>
#include <cstddef>
#include <memory>

/// Numbers of the cells of a grid, perhaps with rows and columns exchanged, in strips of
/// some columns one behind the other: cells that are near each other in any direction
/// are near in memory.
class CellStrips {
public:
    static constexpr int Width = 128; ///< columns of a strip

    /// `given` is the size of the grid whose rows are put and taken. Cells hold nothing
    /// before they are put: to clear much memory takes long, and nobody could stop it.
    CellStrips(const QSize &given, bool isExchanged);

    /// Of the grid as it stands here.
    [[nodiscard]] const QSize &size() const { return m_size; }

    /// Puts rows `first` until `last` of the given grid, one behind the other.
    void put(int first, int last, const float *rows);
    /// Takes them out again.
    void take(int first, int last, float *rows) const;

    /// Calls part(cells, i, n) for the parts of `count` cells of a row from a column on:
    /// cells i until i + n of them lie one behind the other.
    template <class Part> void forParts(int column, int row, int count, const Part &part)
    {
        for (int i = 0, n = 0; i < count; i += n) {
            n = std::min(count - i, Width - (column + i) % Width);
            part(m_cells.get() + place(column + i, row), i, n);
        }
    }
    template <class Part>
    void forParts(int column, int row, int count, const Part &part) const
    {
        for (int i = 0, n = 0; i < count; i += n) {
            n = std::min(count - i, Width - (column + i) % Width);
            part(static_cast<const float *>(m_cells.get()) + place(column + i, row), i,
                 n);
        }
    }
    /// Copies cells of a row.
    void copy(int column, int row, int count, float *to) const;

private:
    template <class Change>
    void exchange(int first, int last, const Change &change) const;

    [[nodiscard]] std::size_t place(int column, int row) const
    {
        const std::size_t strip = std::size_t(column / Width);
        const std::size_t line = strip * std::size_t(m_size.height()) + std::size_t(row);
        return line * Width + std::size_t(column % Width);
    }

    QSize m_size;
    bool m_isExchanged;
    std::unique_ptr<float[]> m_cells;
};
