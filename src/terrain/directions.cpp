#include "terrain/directions.h"

Direction directionTo(double azimuth, double cellX, double cellY)
{
    const double columns = std::sin(azimuth) / cellX; // a metre toward the azimuth
    const double rows = -std::cos(azimuth) / cellY;
    Direction direction;
    direction.isTransposed = std::abs(rows) > std::abs(columns);
    const double along = direction.isTransposed ? rows : columns;
    const double across = direction.isTransposed ? columns : rows;
    direction.slant = across / along;
    direction.step = 1.0 / std::abs(along);
    direction.towardHigher = along > 0.0;
    return direction;
}

bool transpose(const std::vector<float> &from, const QSize &size, std::vector<float> &to,
               WorkerPool &pool, const Stretch &stretch)
{
    constexpr int Tile = 32; // whose rows and columns both stay in the cache
    const int width = size.width();
    const int height = size.height();
    to.resize(from.size());
    return workOnPieces(pool, width, Tile, stretch, [&](int first, int last) {
        for (int top = 0; top < height; top += Tile)
            for (int x = first; x < last; ++x)
                for (int y = top; y < std::min(top + Tile, height); ++y)
                    to[std::size_t(x) * std::size_t(height) + std::size_t(y)] =
                        from[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    });
}
