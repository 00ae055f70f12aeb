#include "render/meshrow.h"

#include "raster/elevationimage.h"
#include "render/transformation.h"

#include <algorithm>
#include <cmath>

MeshColumns MeshColumns::eastward(double from, double step, int cells)
{
    MeshColumns c;
    c.cells = cells;
    c.inner = {from - step, from, from + step};
    c.outer = {std::numeric_limits<double>::quiet_NaN(), from};
    double x = from; // of the cell in hand
    for (int k = 0; k < cells; ++k) {
        c.inner.push_back(x + 2 * step);
        c.outer.push_back(x + step);
        x += step;
    }
    c.outer.push_back(c.inner.back());
    c.outer.front() = c.inner.front();
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

PointRow::PointRow(int points)
    : z(points), nx(points), ny(points), nz(points), column(points), row(points)
{
}

MeshRowBuilder::MeshRowBuilder(std::shared_ptr<const MeshColumns> columns,
                               const ElevationImage &elevation,
                               const Transformation &camera, double stepY)
    : m_columns(std::move(columns)), m_camera(camera), m_stepY(stepY),
      m_innerColumns(elevation, m_columns->inner),
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
}

const double *MeshRowBuilder::xOf(const Heights &heights) const
{
    return heights.outer ? m_columns->outer.data() : m_columns->inner.data();
}

// Reads the four rows of heights around the cells at meshY, as far as the row before
// did not.
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
        const ElevationColumns &read = wanted.outer ? m_outerColumns : m_innerColumns;
        read.read(wanted.y, wanted.z.data());
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
    const int count = m_columns->cells + 1;
    auto row = std::make_shared<PointRow>(count);
    row->y = centre.y;
    row->ySouth = south.y;
    row->yNorth = north.y;
    std::copy_n(centre.z.begin() + 1, count, row->z.begin());
    computeNormals(*row, south, centre, north);
    project(*row);
    return row;
}

// The mean of the four cross products of neighbouring arms, at unit length.
void MeshRowBuilder::computeNormals(PointRow &row, const Heights &south,
                                    const Heights &centre, const Heights &north) const
{
    const double *const xs = xOf(south) + 1;
    const double *const xn = xOf(north) + 1;
    const double *const x = m_columns->inner.data() + 1;
    const double *const zs = south.z.data() + 1;
    const double *const zn = north.z.data() + 1;
    const double *const z = centre.z.data() + 1;
    const double sy = south.y - centre.y;
    const double ny = north.y - centre.y;
    const double level = centre.y - centre.y; // arms to the east and west
    const int count = m_columns->cells + 1;
    double *const outX = row.nx.data();
    double *const outY = row.ny.data();
    double *const outZ = row.nz.data();
    for (int k = 0; k < count; ++k) {
        const double sx = xs[k] - x[k], sz = zs[k] - z[k];
        const double ex = x[k + 1] - x[k], ez = z[k + 1] - z[k];
        const double nx = xn[k] - x[k], nz = zn[k] - z[k];
        const double wx = x[k - 1] - x[k], wz = z[k - 1] - z[k];
        const double vx = 0.25 * ((sy * ez - sz * level) + (level * nz - ez * ny) +
                                  (ny * wz - nz * level) + (level * sz - wz * sy));
        const double vy = 0.25 * ((sz * ex - sx * ez) + (ez * nx - ex * nz) +
                                  (nz * wx - nx * wz) + (wz * sx - wx * sz));
        const double vz = 0.25 * ((sx * level - sy * ex) + (ex * ny - level * nx) +
                                  (nx * level - ny * wx) + (wx * sy - level * sx));
        const double l = std::sqrt(vx * vx + vy * vy + vz * vz);
        const double by = l != 0.0 ? l : 1.0;
        outX[k] = vx / by;
        outY[k] = vy / by;
        outZ[k] = vz / by;
    }
}

void MeshRowBuilder::project(PointRow &row) const
{
    const auto &m = m_camera.projection().m;
    const double *const x = m_columns->inner.data() + 1;
    const double *const z = row.z.data();
    const double y = row.y;
    const int count = m_columns->cells + 1;
    const double limit = Transformation::ScreenLimit;
    std::int16_t *const columns = row.column.data();
    std::int16_t *const rows = row.row.data();
    for (int k = 0; k < count; ++k) {
        const double w = x[k] * m[0][3] + y * m[1][3] + z[k] * m[2][3] + m[3][3];
        const double sx = (x[k] * m[0][0] + y * m[1][0] + z[k] * m[2][0] + m[3][0]) / w;
        const double sy = -(x[k] * m[0][1] + y * m[1][1] + z[k] * m[2][1] + m[3][1]) / w;
        const bool on =
            (w > 0.0) & (sx >= -limit) & (sx <= limit) & (sy >= -limit) & (sy <= limit);
        columns[k] = static_cast<std::int16_t>(
            static_cast<int>(on ? sx : double(PointRow::OffScreen)));
        rows[k] = static_cast<std::int16_t>(static_cast<int>(on ? sy : 0.0));
    }
}

// Which triangles are seen from above: their normal, which points down out of the
// terrain, and the way from the observer to their middle go the same way.
void MeshRowBuilder::testTriangles(MeshRow &row) const
{
    const int cells = m_columns->cells;
    row.drawable.resize(cells);
    const C4Vector observer = m_camera.Beobachter();
    const double *const x = m_columns->inner.data() + 1;
    const double *const zs = row.south->z.data();
    const double *const zn = row.north->z.data();
    const double *const cx0 = m_centroidX[0].data();
    const double *const cx1 = m_centroidX[1].data();
    const double ys = row.south->y, yn = row.north->y;
    const double cy0 = (ys + yn + yn) / 3 - observer.y;
    const double cy1 = (ys + yn + ys) / 3 - observer.y;
    const double cw = (1.0 + 1.0 + 1.0) / 3 - observer.w;
    const double rise = yn - ys;
    const double level = ys - ys;
    std::uint8_t *const drawable = row.drawable.data();
    for (int k = 0; k < cells; ++k) {
        const double width = x[k + 1] - x[k];
        const double none = x[k] - x[k];
        const double za = zn[k] - zs[k];
        const double zb = zn[k + 1] - zs[k];
        const double zc = zs[k + 1] - zs[k];
        // North-west: corners 3, 7, 8.
        const double cz0 = (zs[k] + zn[k] + zn[k + 1]) / 3 - observer.z;
        const double n0x = rise * zb - za * rise;
        const double n0y = za * width - none * zb;
        const double n0z = none * rise - rise * width;
        const double facing0 = cx0[k] * n0x + cy0 * n0y + cz0 * n0z + cw;
        // South-east: corners 3, 8, 4.
        const double cz1 = (zs[k] + zn[k + 1] + zs[k + 1]) / 3 - observer.z;
        const double n1x = rise * zc - zb * level;
        const double n1y = zb * width - width * zc;
        const double n1z = width * level - rise * width;
        const double facing1 = cx1[k] * n1x + cy1 * n1y + cz1 * n1z + cw;
        drawable[k] = static_cast<std::uint8_t>((facing0 > 0.0 ? MeshRow::NorthWest : 0) |
                                                (facing1 > 0.0 ? MeshRow::SouthEast : 0));
    }
    // A corner behind the observer or too far aside drops the triangle.
    const std::int16_t *const s = row.south->column.data();
    const std::int16_t *const n = row.north->column.data();
    constexpr auto Off = PointRow::OffScreen;
    for (int k = 0; k < cells; ++k) {
        const bool shared = (s[k] != Off) & (n[k + 1] != Off);
        const bool northWest = shared & (n[k] != Off);
        const bool southEast = shared & (s[k + 1] != Off);
        const int kept =
            (northWest ? MeshRow::NorthWest : 0) | (southEast ? MeshRow::SouthEast : 0);
        drawable[k] = static_cast<std::uint8_t>(drawable[k] & kept);
    }
}
