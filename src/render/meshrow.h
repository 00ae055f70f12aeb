#pragma once

#include "base/vectors.h"
#include "raster/elevationcolumns.h"
#include "render/meshloops.h"
#include "render/rowreach.h"

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

class ElevationImage;
class PointRowStore;
class Transformation;

/// Where the mesh points of a walk stand in x, from west to east.
///
/// Cell corners and their neighbours to the east and west stand at the inner
/// positions, neighbours to the south and north at the outer ones. The two differ in
/// their last bits where a walk adds up steps that are no binary fractions.
struct MeshColumns {
    int cells = 0;
    bool westward = false;       // cells come from east to west
    bool northWestFirst = false; // which triangle of a cell comes first
    std::vector<double> inner;   // of the corners 0 to cells, one more on each side
    std::vector<double> outer;   // the same; the one more on each side is inner's
    bool agree = false;          // inner and outer positions are the same to the bit

    /// Positions of a walk with `cells` cells, the first of them at `from`.
    static MeshColumns eastward(double from, double step, int cells);
    static MeshColumns westwardFrom(double from, double step, int cells);
};

/// The mesh points at one y: corners of cells, with their normals and where they
/// fall on the screen. Only those of its span are computed.
struct PointRow {
    /// Screen column of a point that cannot be drawn.
    static constexpr std::int16_t OffScreen = std::numeric_limits<std::int16_t>::min();

    explicit PointRow(int points) { resize(points); }
    void resize(int points);

    double y = 0.0;
    double ySouth = 0.0, yNorth = 0.0; // of the neighbours that made the normals
    PointSpan span;
    std::vector<double> z;
    std::vector<double> nx, ny, nz;
    std::vector<std::int16_t> column, row; // on the screen

    [[nodiscard]] C4Vector normal(int k) const { return {nx[k], ny[k], nz[k], 1.0}; }
    /// Bytes that a row of that many points takes.
    static std::size_t bytes(int points)
    {
        return std::size_t(points) * (4 * sizeof(double) + 2 * sizeof(std::int16_t));
    }
};

/// The cells of one row of the mesh, between two rows of points.
struct MeshRow {
    std::shared_ptr<const MeshColumns> columns;
    std::shared_ptr<const PointRow> south, north;
    /// The cells that may be seen: from the first to before the last of these points.
    PointSpan corners;
};

/// The triangles of a cell.
enum CellTriangle : std::uint8_t { NorthWest = 1, SouthEast = 2 };

/// Computes the mesh rows of a walk one after the other, as far as they reach into the
/// picture. What a row shares with the row before is taken over where it is the same to
/// the bit.
class MeshRowBuilder {
public:
    /// Takes its rows of points from the store, which it borrows.
    MeshRowBuilder(std::shared_ptr<const MeshColumns> columns,
                   const ElevationImage &elevation, const Transformation &camera,
                   const RowReach &reach, double stepY, PointRowStore &store);

    [[nodiscard]] MeshRow build(double y);
    /// Of the row built last: for each cell between its corners the triangles that are
    /// seen from above and have all corners on the screen, as bits of CellTriangle.
    [[nodiscard]] const std::vector<std::uint8_t> &drawable() const { return m_drawable; }
    /// Where those cells lie on the screen.
    [[nodiscard]] const CellBoxes &boxes() const { return m_boxes; }

private:
    // Elevations of all points at one y.
    struct Heights {
        double y = std::numeric_limits<double>::quiet_NaN();
        bool outer = false;
        std::vector<double> z;
    };

    void readHeights(double meshY);
    [[nodiscard]] std::shared_ptr<const PointRow>
    points(const Heights &south, const Heights &centre, const Heights &north);
    void computeNormals(PointRow &row, const Heights &south, const Heights &centre,
                        const Heights &north) const;
    void project(PointRow &row) const;
    void testTriangles(const MeshRow &row);
    [[nodiscard]] const double *xOf(const Heights &heights) const;
    /// What may be seen of the rows that lie at most so many steps from y.
    [[nodiscard]] PointSpan reachAround(double y, double steps) const;

    std::shared_ptr<const MeshColumns> m_columns;
    const Transformation &m_camera;
    const RowReach &m_reach;
    double m_stepY;
    PointRowStore &m_store;
    ElevationColumns m_innerColumns, m_outerColumns;
    std::array<Heights, 4> m_heights; // south of the row, its two rows, north of it
    std::array<std::shared_ptr<const PointRow>, 2> m_points; // of the row before
    std::vector<double> m_centroidX[2]; // of both triangles, from the observer
    std::vector<std::uint8_t> m_drawable;
    CellBoxes m_boxes;
};
