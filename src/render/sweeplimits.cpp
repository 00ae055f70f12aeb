#include "render/sweeplimits.h"

#include "render/meshmargin.h"

#include <cmath>

namespace {

// The mesh line that is `lines` beyond the last one before v, with a margin that is
// below 0 for a lower limit. Never a negative zero.
double snapped(double v, double margin, double lines, double step)
{
    return (std::trunc((v + margin) / step + lines) + 0.0) * step;
}

} // namespace

void SweepLimits::Clip(const C4Vector &point)
{
    if (point.x < footMinX)
        footMinX = point.x;
    if (point.x > footMaxX)
        footMaxX = point.x;
    if (point.y < footMinY)
        footMinY = point.y;
    if (point.y > footMaxY)
        footMaxY = point.y;
}

void SweepLimits::setLimits()
{
    const double ox = observer.x;
    const double oy = observer.y;
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

void SweepLimits::RoundTheLimits()
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

bool SweepLimits::quadrantRuns(int quadrant) const
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

bool SweepLimits::meshIsWalkable() const
{
    // A terrain without extent has no cells, and a step of nothing never ends.
    return std::isfinite(stepX) && std::isfinite(stepY) && stepX > 0.0 && stepY > 0.0;
}
