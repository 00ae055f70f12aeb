#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

/// Storage of the triangulation. Each reserves more bytes per element than the
/// element takes; what is never used is never touched, so it costs address space
/// and no memory. Allocate() gives null when the reserve is refused, and leaves
/// the object empty.
namespace importers {

/// Gives memory back to the C library.
struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using Memory = std::unique_ptr<T, FreeMemory>;

constexpr std::size_t DoubleReserve = 64; // bytes per element
constexpr std::size_t IntReserve = 16;
constexpr std::size_t RowTableReserve = 16;

/// Null for a count below 0 too.
template <typename T> Memory<T> reserve(std::int64_t count, std::size_t bytesPerElement)
{
    if (count < 0 || std::size_t(count) > SIZE_MAX / 2 / bytesPerElement)
        return nullptr;
    const std::size_t bytes = std::size_t(count) * bytesPerElement;
    return Memory<T>(static_cast<T *>(std::malloc(bytes > 0 ? bytes : 1)));
}

/// Indexed by row, then by column. The rows lie close together, one behind the
/// other, and the reserve behind them all.
template <typename T, std::size_t ReservedBytes> class RowMatrix {
public:
    T **rows = nullptr;
    std::int32_t columns = 0;
    std::int32_t rowCount = 0;

    /// Raises both numbers to at least 2. Gives the row table.
    T **Allocate(std::int32_t wantedRows, std::int32_t wantedColumns)
    {
        Free();
        const std::int32_t r = wantedRows < 2 ? 2 : wantedRows;
        const std::int32_t c = wantedColumns < 2 ? 2 : wantedColumns;
        m_table = reserve<T *>(r, RowTableReserve);
        m_elements = reserve<T>(std::int64_t(r) * c, ReservedBytes);
        if (!m_table || !m_elements) {
            Free();
            return nullptr;
        }
        rows = m_table.get();
        columns = c;
        rowCount = r;
        for (std::int32_t i = 0; i < r; ++i)
            rows[i] = m_elements.get() + std::ptrdiff_t(i) * c;
        return rows;
    }

    void Free()
    {
        m_table.reset();
        m_elements.reset();
        rows = nullptr;
        columns = 0;
        rowCount = 0;
    }

    /// What rows[index] is, without a look into the table.
    [[nodiscard]] T *row(std::int32_t index) const
    {
        return m_elements.get() + std::ptrdiff_t(index) * columns;
    }

private:
    Memory<T *> m_table;
    Memory<T> m_elements;
};

template <typename T, std::size_t ReservedBytes> class Vector {
public:
    T *data = nullptr;
    std::int32_t size = 0;

    T *Allocate(std::int32_t wantedSize)
    {
        Free();
        m_elements = reserve<T>(wantedSize, ReservedBytes);
        if (m_elements) {
            data = m_elements.get();
            size = wantedSize;
        }
        return data;
    }

    void Free()
    {
        m_elements.reset();
        data = nullptr;
        size = 0;
    }

private:
    Memory<T> m_elements;
};

} // namespace importers

using CDoubleMatrix = importers::RowMatrix<double, importers::DoubleReserve>;
using CIntMatrix = importers::RowMatrix<std::int32_t, importers::IntReserve>;
using CDoubleVector = importers::Vector<double, importers::DoubleReserve>;
using CIntVector = importers::Vector<std::int32_t, importers::IntReserve>;
