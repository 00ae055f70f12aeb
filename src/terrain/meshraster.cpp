#include "terrain/meshraster.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Cells between two looks at whether anybody waits; a triangle counts as some.
constexpr qint64 CellsBetweenSteps = 1 << 18;
constexpr qint64 CellsOfATriangle = 8;

// A corner of a triangle in cells, counted from the middle of the first.
struct Corner {
    double column;
    double row;
    double height;
    qint32 point;
};

using Corners = std::array<Corner, 3>;

// On which side of the edge from `a` to `b` a cell is, and how far. Computed from the
// same end for both triangles at an edge, so that no cell on it falls between them.
double side(const Corner &a, const Corner &b, double column, double row)
{
    const bool isTurned = b.point < a.point;
    const Corner &from = isTurned ? b : a;
    const Corner &to = isTurned ? a : b;
    const double area = (to.column - from.column) * (row - from.row) -
                        (to.row - from.row) * (column - from.column);
    return isTurned ? -area : area;
}

struct Span {
    int first;
    int last;
};

// Whole numbers between two places, cut to [0, count).
Span within(double lowest, double highest, int count)
{
    const double first = std::max(std::ceil(lowest), 0.0);
    const double last = std::min(std::floor(highest), count - 1.0);
    return first <= last ? Span{int(first), int(last)} : Span{0, -1};
}

// The columns that a triangle can cover in a row: between the places where its edges
// cross it, and a cell more for rounding.
Span columnsIn(const Corners &corners, double row, int count)
{
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();
    for (std::size_t i = 0; i < 3; ++i) {
        const Corner &a = corners[i];
        const Corner &b = corners[(i + 1) % 3];
        if (std::min(a.row, b.row) > row || std::max(a.row, b.row) < row)
            continue;
        const double share = a.row == b.row ? 0.0 : (row - a.row) / (b.row - a.row);
        const double at = a.column + share * (b.column - a.column);
        // A level edge counts with both of its ends.
        const double other = a.row == b.row ? b.column : at;
        lowest = std::min({lowest, at, other});
        highest = std::max({highest, at, other});
    }
    return within(lowest - 1.0, highest + 1.0, count);
}

// Gives how many cells were looked at.
qint64 fill(const Corners &corners, Heights &heights)
{
    const auto &[a, b, c] = corners;
    const auto [north, south] = std::minmax({a.row, b.row, c.row});
    const Span rows = within(north, south, heights.size.height());
    const double area = side(a, b, c.column, c.row);
    if (area == 0.0)
        return 0;
    const double sign = area < 0.0 ? -1.0 : 1.0;
    qint64 cells = 0;
    for (int y = rows.first; y <= rows.last; ++y) {
        float *const row = heights.row(y);
        const Span columns = columnsIn(corners, y, heights.size.width());
        cells += columns.last - columns.first + 1;
        for (int x = columns.first; x <= columns.last; ++x) {
            const double ofA = sign * side(b, c, x, y);
            const double ofB = sign * side(c, a, x, y);
            const double ofC = sign * side(a, b, x, y);
            if (ofA < 0.0 || ofB < 0.0 || ofC < 0.0)
                continue;
            // Around one corner, so that a level triangle stays level.
            row[x] = float(a.height +
                           (ofB * (b.height - a.height) + ofC * (c.height - a.height)) /
                               (ofA + ofB + ofC));
        }
    }
    return cells;
}

// The square of the length of an edge, metres.
double squaredLength(const GroundPoint &a, const GroundPoint &b, const PlaneScale &scale)
{
    const double dx = (b.x - a.x) * scale.x;
    const double dy = (b.y - a.y) * scale.y;
    return dx * dx + dy * dy;
}

bool isShort(const TerrainMesh &mesh, const std::array<qint32, 3> &triangle, double most)
{
    const auto point = [&](int corner) {
        return mesh.points[std::size_t(triangle[std::size_t(corner)])];
    };
    for (int i = 0; i < 3; ++i)
        if (squaredLength(point(i), point((i + 1) % 3), mesh.scale) > most)
            return false;
    return true;
}

Extent boundsOf(const std::vector<GroundPoint> &points)
{
    Extent bounds{points.front().x, points.front().y, points.front().x, points.front().y};
    for (const GroundPoint &point : points) {
        bounds.west = std::min(bounds.west, point.x);
        bounds.east = std::max(bounds.east, point.x);
        bounds.south = std::min(bounds.south, point.y);
        bounds.north = std::max(bounds.north, point.y);
    }
    return bounds;
}

// Square metres of all triangles.
double areaOf(const TerrainMesh &mesh)
{
    double area = 0.0;
    for (const auto &[a, b, c] : mesh.triangles) {
        const GroundPoint &p = mesh.points[std::size_t(a)];
        const GroundPoint &q = mesh.points[std::size_t(b)];
        const GroundPoint &r = mesh.points[std::size_t(c)];
        area += std::fabs((q.x - p.x) * (r.y - p.y) - (r.x - p.x) * (q.y - p.y));
    }
    return area / 2 * mesh.scale.x * mesh.scale.y;
}

// The largest of 1, 2 and 5 times a power of ten that is not larger.
double roundedDown(double value)
{
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double factor : {5.0, 2.0})
        if (factor * power <= value)
            return factor * power;
    return power;
}

} // namespace

SurfaceGrid proposedGrid(const TerrainMesh &mesh, int mostCells)
{
    const Extent bounds = boundsOf(mesh.points);
    const double wide = bounds.width() * mesh.scale.x;
    const double high = bounds.height() * mesh.scale.y;
    double metres = roundedDown(std::sqrt(areaOf(mesh) / double(mesh.points.size())));
    // One cell more for the alignment.
    metres = std::max({metres, wide / (mostCells - 1), high / (mostCells - 1)});
    const double cellX = metres / mesh.scale.x;
    const double cellY = metres / mesh.scale.y;
    const double west = std::floor(bounds.west / cellX) * cellX;
    const double north = std::ceil(bounds.north / cellY) * cellY;
    const auto cells = [mostCells](double length, double cell) {
        return std::clamp(int(std::ceil(length / cell)), 1, mostCells);
    };
    return {{west, cellX, 0.0, north, 0.0, -cellY},
            {cells(bounds.east - west, cellX), cells(north - bounds.south, cellY)}};
}

Result<Heights> rasterized(const TerrainMesh &mesh, const SurfaceGrid &grid,
                           double longestEdge, Progress &progress)
{
    Heights heights{grid.size, {}};
    heights.metres.assign(std::size_t(grid.size.width()) *
                              std::size_t(grid.size.height()),
                          std::numeric_limits<float>::quiet_NaN());
    const GeoTransform &t = grid.transform;
    const auto corner = [&](qint32 index) {
        const GroundPoint &p = mesh.points[std::size_t(index)];
        return Corner{(p.x - t[0]) / t[1] - 0.5, (p.y - t[3]) / t[5] - 0.5, p.z, index};
    };
    const double most = longestEdge * longestEdge;
    qint64 cells = CellsBetweenSteps;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        if (cells >= CellsBetweenSteps) {
            cells = 0;
            if (!progress.step(qint64(i), qint64(mesh.triangles.size())))
                return stopped();
        }
        const auto &triangle = mesh.triangles[i];
        cells += CellsOfATriangle;
        if (isShort(mesh, triangle, most))
            cells += fill({corner(triangle[0]), corner(triangle[1]), corner(triangle[2])},
                          heights);
    }
    return heights;
}
