#include "terrain/directions.h"

#include <cmath>

Direction directionTo(double azimuth, double cellX, double cellY)
{
    const double columns = std::sin(azimuth) / cellX; // a metre toward the azimuth
    const double rows = -std::cos(azimuth) / cellY;
    Direction direction;
    direction.isExchanged = std::abs(columns) > std::abs(rows);
    const double along = direction.isExchanged ? columns : rows;
    const double across = direction.isExchanged ? rows : columns;
    direction.slant = across / along;
    direction.step = 1.0 / std::abs(along);
    direction.towardHigher = along > 0.0;
    return direction;
}

bool putHeights(const Heights &heights, CellStrips &strips, WorkerPool &pool,
                const Stretch &stretch)
{
    return workOnPieces(
        pool, heights.size.height(), CellStrips::Width, stretch,
        [&](int first, int last) { strips.put(first, last, heights.row(first)); });
}
