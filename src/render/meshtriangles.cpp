#include "render/meshtriangles.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

// Bytes of mesh rows that are kept before their pixels get their colours.
constexpr std::size_t MostKeptBytes = std::size_t(24) << 20;

unsigned int numbersOf(int cells) { return 2 * static_cast<unsigned int>(cells); }

ScreenCorner corner(const PointRow &points, int k)
{
    return {points.column[k], points.row[k]};
}

ScreenBox boxOf(const PointRow &south, const PointRow &north, int cell)
{
    const auto [left, right] = std::minmax({south.column[cell], south.column[cell + 1],
                                            north.column[cell], north.column[cell + 1]});
    const auto [top, bottom] = std::minmax(
        {south.row[cell], south.row[cell + 1], north.row[cell], north.row[cell + 1]});
    return {left, right, top, bottom};
}

} // namespace

void MeshTriangles::begin(int mostCells, const Dust &dust)
{
    clear();
    m_stride = std::bit_ceil(numbersOf(std::max(mostCells, 1)));
    m_dust = dust;
}

void MeshTriangles::clear()
{
    m_rows.clear();
    m_keptBytes = 0;
}

// One stride for all rows whose numbers are in the picture.
bool MeshTriangles::hasRoomFor(std::size_t rows, int cells) const
{
    return numbersOf(cells) <= m_stride && m_keptBytes <= MostKeptBytes &&
           (m_rows.size() + rows + 1) * m_stride < ScreenTrigon::NumberLimit;
}

std::size_t MeshTriangles::append(std::size_t rows, const MeshColumns &columns)
{
    const std::size_t first = m_rows.size();
    const std::size_t pointRows = columns.agree ? 1 : 2; // shared, or one each
    m_stride = std::max(m_stride, std::bit_ceil(numbersOf(columns.cells)));
    m_rows.resize(first + rows);
    m_keptBytes += rows * pointRows * PointRow::bytes(columns.cells + 1);
    return first;
}

void MeshTriangles::put(std::size_t index, MeshRow placed,
                        const std::vector<std::uint8_t> &drawable, bool nearFirst,
                        PaintLists &lists)
{
    // In its place before it is listed: what paints at once asks for it.
    m_rows[index] = std::move(placed);
    const MeshRow &row = m_rows[index];
    const PointRow &south = *row.south;
    const PointRow &north = *row.north;
    const auto number = static_cast<unsigned int>(index) * m_stride;
    const auto list = [&](int cell, CellTriangle triangle) {
        const unsigned int first = number + numbersOf(cell);
        if (!(drawable[cell] & triangle))
            return;
        if (triangle == NorthWest)
            lists.add(corner(south, cell), corner(north, cell), corner(north, cell + 1),
                      first);
        else
            lists.add(corner(south, cell), corner(north, cell + 1),
                      corner(south, cell + 1), first + 1);
    };
    const bool northWestFirst = row.columns->northWestFirst != nearFirst;
    const bool westward = row.columns->westward != nearFirst;
    const auto [first, last] = row.corners;
    for (int k = first; k < last; ++k) {
        const int cell = westward ? first + last - 1 - k : k;
        if (!drawable[cell] ||
            m_dust.hides(row.columns->inner[cell + 1], south.y, south.z[cell]))
            continue;
        if (drawable[cell] == (NorthWest | SouthEast) &&
            lists.hides(boxOf(south, north, cell)))
            continue;
        list(cell, northWestFirst ? NorthWest : SouthEast);
        list(cell, northWestFirst ? SouthEast : NorthWest);
    }
}

Triangle MeshTriangles::triangle(unsigned int number) const
{
    const int shift = std::countr_zero(m_stride); // the stride is a power of two
    const MeshRow &row = m_rows[number >> shift];
    const unsigned int inRow = number & (m_stride - 1);
    const auto cell = static_cast<int>(inRow / 2);
    const bool northWest = inRow % 2 == 0;
    const double *const x = row.columns->inner.data() + 1;
    const PointRow &south = *row.south;
    const PointRow &north = *row.north;
    // The corners: south-west, then clockwise, as put() lists them.
    const PointRow &last = northWest ? north : south;
    const int second = northWest ? cell : cell + 1;
    const int third = cell + 1;
    const auto vertex = [x](const PointRow &points, int k) {
        return C4Vector{x[k], points.y, points.z[k], 1.0};
    };
    // The same dust for both triangles of a cell.
    return {{corner(south, cell), corner(north, second), corner(last, third)},
            {vertex(south, cell), vertex(north, second), vertex(last, third)},
            {south.normal(cell), north.normal(second), last.normal(third)},
            m_dust.share(x[cell], south.y, south.z[cell])};
}
