// The walking limits of a frame and the walks over the mesh.

#include "render/meshframe.h"
#include "render/terrainsweep.h"

#include <cmath>
#include <utility>

namespace {

// Keeps the mesh limit tests off the cell edges.
constexpr double MeshMargin = 1e-05;
// Cells of a row, should a step of next to nothing make more than a mesh has.
constexpr int MostCells = 1 << 20;

// The mesh line that is `lines` beyond the last one before v, with a margin that is
// below 0 for a lower limit. Never a negative zero.
double snapped(double v, double margin, double lines, double step)
{
    return (std::trunc((v + margin) / step + lines) + 0.0) * step;
}

} // namespace

void TerrainSweep::setLimits()
{
    const double ox = sweepObserver.x;
    const double oy = sweepObserver.y;
    loX = {footMinX, ox, ox, footMinX};
    hiX = {ox, footMaxX, footMaxX, ox};
    loY = {oy, oy, footMinY, footMinY};
    hiY = {footMaxY, footMaxY, oy, oy};

    const auto hold = [](double &v, double least, double most) {
        if (v < least)
            v = least;
        if (v > most)
            v = most;
    };
    for (int k = 0; k < 4; ++k) {
        hold(loX[k], footMinX, footMaxX);
        hold(hiX[k], footMinX, footMaxX);
        hold(loY[k], footMinY, footMaxY);
        hold(hiY[k], footMinY, footMaxY);
    }
}

void TerrainSweep::RoundTheLimits()
{
    // The limits beside the observer leave out the column and the row of the cell
    // under it, which remain for the boundary walks.
    for (const int k : {0, 3}) {
        loX[k] = snapped(loX[k], -MeshMargin, 0, stepX);
        hiX[k] = snapped(hiX[k], MeshMargin, -1, stepX);
    }
    for (const int k : {1, 2}) {
        loX[k] = snapped(loX[k], -MeshMargin, 1, stepX);
        hiX[k] = snapped(hiX[k], MeshMargin, 0, stepX);
    }
    for (const int k : {2, 3}) {
        loY[k] = snapped(loY[k], -MeshMargin, 0, stepY);
        hiY[k] = snapped(hiY[k], MeshMargin, -1, stepY);
    }
    for (const int k : {0, 1}) {
        loY[k] = snapped(loY[k], -MeshMargin, 1, stepY);
        hiY[k] = snapped(hiY[k], MeshMargin, 0, stepY);
    }
}

bool TerrainSweep::quadrantRuns(int quadrant) const
{
    switch (quadrant) {
    case 0:
        return loX[0] != loX[1] && hiY[0] != hiY[3];
    case 1:
        return hiX[0] != hiX[1] && hiY[1] != hiY[2];
    case 2:
        return hiX[3] != hiX[2] && loY[2] != loY[1];
    default:
        return loX[3] != loX[2] && loY[3] != loY[0];
    }
}

bool TerrainSweep::mayStartRow() const { return !rowStarts || rowStarts(); }

MeshColumns TerrainSweep::eastward(double from, double until) const
{
    int cells = 0;
    for (double x = from; x < until && cells < MostCells; x += stepX)
        ++cells;
    return MeshColumns::eastward(from, stepX, cells);
}

MeshColumns TerrainSweep::westward(double from, double until) const
{
    int cells = 0;
    for (double x = from; x >= until && cells < MostCells; x -= stepX)
        ++cells;
    return MeshColumns::westwardFrom(from, stepX, cells);
}

void TerrainSweep::walkSouth(MeshColumns columns, First first, double from, double until)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y >= until; y -= stepY) {
        if (!mayStartRow())
            return;
        m_frame->addRow(y);
    }
}

void TerrainSweep::walkNorth(MeshColumns columns, First first, double from, double until)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y < until; y += stepY) {
        if (!mayStartRow())
            return;
        m_frame->addRow(y);
    }
}

void TerrainSweep::walkOneRow(MeshColumns columns, First first, double y)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    if (mayStartRow())
        m_frame->addRow(y);
}

void TerrainSweep::ScanQuadrant0()
{
    if (quadrantRuns(0))
        walkSouth(eastward(loX[0], hiX[0] + MeshMargin), First::NorthWest, hiY[0],
                  loY[0] - MeshMargin);
}

void TerrainSweep::ScanQuadrant1()
{
    if (quadrantRuns(1))
        walkSouth(westward(hiX[1], loX[1] - MeshMargin), First::SouthEast, hiY[1],
                  loY[1] - MeshMargin);
}

void TerrainSweep::ScanQuadrant2()
{
    if (quadrantRuns(2))
        walkNorth(westward(hiX[2], loX[2] - MeshMargin), First::SouthEast, loY[2],
                  hiY[2] + MeshMargin);
}

void TerrainSweep::ScanQuadrant3()
{
    if (quadrantRuns(3))
        walkNorth(eastward(loX[3], hiX[3] + MeshMargin), First::NorthWest, loY[3],
                  hiY[3] + MeshMargin);
}

void TerrainSweep::ScanBoundary01()
{
    if (quadrantRuns(0) && quadrantRuns(1))
        walkSouth(MeshColumns::eastward(hiX[0] + stepX, stepX, 1), First::NorthWest,
                  hiY[0], loY[0] - MeshMargin);
}

void TerrainSweep::ScanBoundary12()
{
    if (quadrantRuns(1) && quadrantRuns(2))
        walkOneRow(westward(hiX[1], loX[1] - MeshMargin), First::SouthEast,
                   loY[1] - stepY);
}

void TerrainSweep::ScanBoundary23()
{
    if (quadrantRuns(2) && quadrantRuns(3))
        walkNorth(MeshColumns::eastward(loX[2] - stepX, stepX, 1), First::SouthEast,
                  loY[2], hiY[2] + MeshMargin);
}

void TerrainSweep::ScanBoundary30()
{
    // The last cell is the one under the observer.
    if (quadrantRuns(3) && quadrantRuns(0))
        walkOneRow(eastward(loX[3], hiX[3] + stepX + MeshMargin), First::NorthWest,
                   hiY[3] + stepY);
}
