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

void MeshTriangles::put(std::size_t index, MeshRow placed, const MeshRowBuilder &built,
                        bool nearFirst, PaintLists &lists)
{
    // In its place before it is listed: what paints at once asks for it.
    m_rows[index] = std::move(placed);
    const MeshRow &row = m_rows[index];
    const PointRow &south = *row.south;
    const PointRow &north = *row.north;
    const std::uint8_t *const drawable = built.drawable().data();
    const CellBoxes &boxes = built.boxes();
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
    const CellTriangle then =
        row.columns->northWestFirst != nearFirst ? SouthEast : NorthWest;
    const CellTriangle now = then == SouthEast ? NorthWest : SouthEast;
    const bool westward = row.columns->westward != nearFirst;
    const auto [first, last] = row.corners;
    const double *const x = row.columns->inner.data() + 1;
    const bool allNear = first < last && m_dust.surelyShows(x[first], x[last], south.y);
    for (int k = first; k < last; ++k) {
        const int cell = westward ? first + last - 1 - k : k;
        if (!drawable[cell] ||
            (!allNear && m_dust.hides(x[cell], south.y, south.z[cell])))
            continue;
        const ScreenBox box = {boxes.left[cell], boxes.right[cell], boxes.top[cell],
                               boxes.bottom[cell]};
        if (drawable[cell] == (NorthWest | SouthEast) && lists.hides(box))
            continue;
        list(cell, now);
        list(cell, then);
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
