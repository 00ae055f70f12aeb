#include "render/meshrow.h"

#include "raster/elevationimage.h"
#include "render/meshloops.h"
#include "render/pointrowstore.h"
#include "render/transformation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// How far the rows stand from one whose corners, and whose heights, they need: a cell
// has its corners on both its rows, and a normal has arms to both neighbours. Half a step
// more for the rounding of y.
constexpr double StepsToCorners = 1.5;
constexpr double StepsToArms = 3.0;

} // namespace

MeshColumns MeshColumns::eastward(double from, double step, int cells)
{
    MeshColumns c;
    c.cells = cells;
    c.inner = {from - step, from, from + step};
    c.outer = {c.inner.front(), from};
    double x = from; // of the cell in hand
    for (int k = 0; k < cells; ++k) {
        c.inner.push_back(x + 2 * step);
        c.outer.push_back(x + step);
        x += step;
    }
    c.outer.push_back(c.inner.back());
    c.agree = c.inner == c.outer;
    return c;
}

MeshColumns MeshColumns::westwardFrom(double from, double step, int cells)
{
    MeshColumns c;
    c.cells = cells;
    c.westward = true;
    c.inner = {from + 2 * step, from + step, from};
    double x = from;
    for (int k = 0; k < cells; ++k) {
        c.inner.push_back(x - step);
        x -= step;
    }
    std::reverse(c.inner.begin(), c.inner.end());
    c.outer = c.inner;
    c.agree = true;
    return c;
}

void PointRow::resize(int points)
{
    for (std::vector<double> *values : {&z, &nx, &ny, &nz})
        values->resize(points);
    column.resize(points);
    row.resize(points);
}

MeshRowBuilder::MeshRowBuilder(std::shared_ptr<const MeshColumns> columns,
                               const ElevationImage &elevation,
                               const Transformation &camera, const RowReach &reach,
                               double stepY, PointRowStore &store)
    : m_columns(std::move(columns)), m_camera(camera), m_reach(reach), m_stepY(stepY),
      m_store(store), m_innerColumns(elevation, m_columns->inner),
      m_outerColumns(elevation, m_columns->outer)
{
    const double observer = camera.Beobachter().x;
    const double *const x = m_columns->inner.data() + 1;
    for (auto &centroids : m_centroidX)
        centroids.resize(m_columns->cells);
    for (int k = 0; k < m_columns->cells; ++k) {
        m_centroidX[0][k] = (x[k] + x[k] + x[k + 1]) / 3 - observer;
        m_centroidX[1][k] = (x[k] + x[k + 1] + x[k + 1]) / 3 - observer;
    }
    for (Heights &heights : m_heights)
        heights.z.resize(m_columns->inner.size());
    m_drawable.resize(m_columns->cells);
    m_boxes.resize(m_columns->cells);
}

const double *MeshRowBuilder::xOf(const Heights &heights) const
{
    return heights.outer ? m_columns->outer.data() : m_columns->inner.data();
}

PointSpan MeshRowBuilder::reachAround(double y, double steps) const
{
    const double wide = steps * std::abs(m_stepY);
    return m_reach.of(m_columns->inner.data() + 1, m_columns->cells + 1, y - wide,
                      y + wide);
}

// Makes sure of the four rows of heights around the cells at meshY. Those that the cells
// of the row before had read already are taken over; only the others are read.
void MeshRowBuilder::readHeights(double meshY)
{
    std::array<Heights, 4> before;
    before.swap(m_heights);
    for (int k = 0; k < 4; ++k) {
        Heights &wanted = m_heights[k];
        wanted.y = meshY + (k - 1) * m_stepY;
        wanted.outer = k == 0 || k == 3;
        for (Heights &had : before) {
            const bool sameX = had.outer == wanted.outer || m_columns->agree;
            if (had.y == wanted.y && sameX && !had.z.empty()) {
                wanted.z = std::move(had.z);
                had.z.clear();
                break;
            }
        }
    }
    for (Heights &wanted : m_heights) {
        if (!wanted.z.empty())
            continue;
        for (Heights &had : before) {
            if (!had.z.empty()) {
                wanted.z = std::move(had.z);
                had.z.clear();
                break;
            }
        }
        const PointSpan span = reachAround(wanted.y, StepsToArms);
        if (span.count() <= 0)
            continue;
        // One point more on both sides, which stands one place on in the columns.
        const ElevationColumns &read = wanted.outer ? m_outerColumns : m_innerColumns;
        read.read(wanted.y, span.first, span.count() + 2, wanted.z.data() + span.first);
    }
}

MeshRow MeshRowBuilder::build(double y)
{
    readHeights(y);
    const auto &[south, lower, upper, north] = m_heights;
    MeshRow row;
    row.columns = m_columns;
    row.south = points(south, lower, upper);
    row.north = points(lower, upper, north);
    m_points = {row.south, row.north};
    row.corners = {std::max(row.south->span.first, row.north->span.first),
                   std::min(row.south->span.last, row.north->span.last)};
    testTriangles(row);
    return row;
}

std::shared_ptr<const PointRow>
MeshRowBuilder::points(const Heights &south, const Heights &centre, const Heights &north)
{
    if (m_columns->agree) {
        for (const auto &had : m_points)
            if (had && had->y == centre.y && had->ySouth == south.y &&
                had->yNorth == north.y)
                return had;
    }
    auto row = m_store.take(m_columns->cells + 1);
    row->y = centre.y;
    row->ySouth = south.y;
    row->yNorth = north.y;
    row->span = reachAround(centre.y, StepsToCorners);
    if (row->span.count() <= 0)
        return row;
    const int first = row->span.first;
    std::copy_n(centre.z.begin() + 1 + first, row->span.count(), row->z.begin() + first);
    computeNormals(*row, south, centre, north);
    project(*row);
    return row;
}

void MeshRowBuilder::computeNormals(PointRow &row, const Heights &south,
                                    const Heights &centre, const Heights &north) const
{
    const int first = row.span.first;
    const int here = first + 1; // in what has one point more on both sides
    const RowArms arms = {m_columns->inner.data() + here,
                          xOf(south) + here,
                          xOf(north) + here,
                          centre.z.data() + here,
                          south.z.data() + here,
                          north.z.data() + here,
                          centre.y,
                          south.y,
                          north.y};
    rowNormals(arms, row.span.count(), row.nx.data() + first, row.ny.data() + first,
               row.nz.data() + first);
}

void MeshRowBuilder::project(PointRow &row) const
{
    const int first = row.span.first;
    rowOnScreen(m_columns->inner.data() + 1 + first, row.y, row.z.data() + first,
                row.span.count(), m_camera.projection(), PointRow::OffScreen,
                row.column.data() + first, row.row.data() + first);
}

void MeshRowBuilder::testTriangles(const MeshRow &row)
{
    const auto [first, last] = row.corners;
    if (last <= first)
        return;
    std::uint8_t *const drawable = m_drawable.data();
    rowFacing({m_columns->inner.data() + 1 + first, row.south->z.data() + first,
               row.north->z.data() + first, row.south->y, row.north->y,
               m_centroidX[0].data() + first, m_centroidX[1].data() + first,
               m_camera.Beobachter()},
              last - first, drawable + first);
    rowBounds(row.south->column.data() + first, row.north->column.data() + first,
              last - first, m_boxes.left.data() + first, m_boxes.right.data() + first);
    rowBounds(row.south->row.data() + first, row.north->row.data() + first, last - first,
              m_boxes.top.data() + first, m_boxes.bottom.data() + first);
    // A corner behind the observer or too far aside drops the triangle.
    const std::int16_t *const s = row.south->column.data();
    const std::int16_t *const n = row.north->column.data();
    constexpr auto Off = PointRow::OffScreen;
    for (int k = first; k < last; ++k) {
        const bool shared = (s[k] != Off) & (n[k + 1] != Off);
        const bool northWest = shared & (n[k] != Off);
        const bool southEast = shared & (s[k + 1] != Off);
        const int kept = (northWest ? NorthWest : 0) | (southEast ? SouthEast : 0);
        drawable[k] = static_cast<std::uint8_t>(drawable[k] & kept);
    }
}
