// The walking limits of a frame and the walks over the mesh.

#include "base/vectors.h"
#include "render/plain/screentrigon.h"
#include "render/plain/terrainsweep.h"

#include <cmath>

namespace plain {

namespace {

// Keeps the mesh limit tests off the cell edges.
constexpr double MeshMargin = 1e-05;

// The mesh line that is `lines` beyond the last one before v, with a margin that is
// below 0 for a lower limit.
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

bool TerrainSweep::startRow()
{
    rowRestart = true;
    return !rowStarts || rowStarts();
}

void TerrainSweep::walkEast(double from, double until, First first)
{
    for (meshX = from; meshX < until; meshX += stepX) {
        if (rowRestart)
            AllesBerechnen();
        else
            TeilPlusBerechnen();
        drawCell(first);
    }
}

void TerrainSweep::walkWest(double from, double until, First first)
{
    for (meshX = from; meshX >= until; meshX -= stepX) {
        if (rowRestart)
            AllesBerechnen();
        else
            TeilMinusBerechnen();
        drawCell(first);
    }
}

void TerrainSweep::ScanQuadrant0()
{
    if (!quadrantRuns(0))
        return;
    for (meshY = hiY[0]; meshY >= loY[0] - MeshMargin; meshY -= stepY) {
        if (!startRow())
            return;
        walkEast(loX[0], hiX[0] + MeshMargin, First::NorthWest);
    }
}

void TerrainSweep::ScanQuadrant1()
{
    if (!quadrantRuns(1))
        return;
    for (meshY = hiY[1]; meshY >= loY[1] - MeshMargin; meshY -= stepY) {
        if (!startRow())
            return;
        walkWest(hiX[1], loX[1] - MeshMargin, First::SouthEast);
    }
}

void TerrainSweep::ScanQuadrant2()
{
    if (!quadrantRuns(2))
        return;
    for (meshY = loY[2]; meshY < hiY[2] + MeshMargin; meshY += stepY) {
        if (!startRow())
            return;
        walkWest(hiX[2], loX[2] - MeshMargin, First::SouthEast);
    }
}

void TerrainSweep::ScanQuadrant3()
{
    if (!quadrantRuns(3))
        return;
    for (meshY = loY[3]; meshY < hiY[3] + MeshMargin; meshY += stepY) {
        if (!startRow())
            return;
        walkEast(loX[3], hiX[3] + MeshMargin, First::NorthWest);
    }
}

void TerrainSweep::ScanBoundary01()
{
    if (!quadrantRuns(0) || !quadrantRuns(1))
        return;
    meshX = hiX[0] + stepX;
    for (meshY = hiY[0]; meshY >= loY[0] - MeshMargin; meshY -= stepY) {
        if (!startRow())
            return;
        AllesBerechnen();
        drawCell(First::NorthWest);
    }
}

void TerrainSweep::ScanBoundary12()
{
    if (!quadrantRuns(1) || !quadrantRuns(2))
        return;
    meshY = loY[1] - stepY;
    if (!startRow())
        return;
    walkWest(hiX[1], loX[1] - MeshMargin, First::SouthEast);
}

void TerrainSweep::ScanBoundary23()
{
    if (!quadrantRuns(2) || !quadrantRuns(3))
        return;
    meshX = loX[2] - stepX;
    for (meshY = loY[2]; meshY < hiY[2] + MeshMargin; meshY += stepY) {
        if (!startRow())
            return;
        AllesBerechnen();
        drawCell(First::SouthEast);
    }
}

void TerrainSweep::ScanBoundary30()
{
    if (!quadrantRuns(3) || !quadrantRuns(0))
        return;
    meshY = hiY[3] + stepY;
    if (!startRow())
        return;
    // The last cell is the one under the observer.
    walkEast(loX[3], hiX[3] + stepX + MeshMargin, First::NorthWest);
}

} // namespace plain
