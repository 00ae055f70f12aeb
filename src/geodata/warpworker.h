#pragma once

#include "geodata/mosaic.h"
#include "geodata/pieces.h"
#include "geodata/warpscales.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"

#include <QRect>

/// The tiles in which a grid is warped: each takes some milliseconds and some megabytes.
struct WarpTiles {
    QSize tile;
    QSize grid;
    std::vector<std::vector<WarpScale>> scales; ///< of each layer

    [[nodiscard]] int rows() const
    {
        return (grid.height() + tile.height() - 1) / tile.height();
    }
    [[nodiscard]] int columns() const
    {
        return (grid.width() + tile.width() - 1) / tile.width();
    }
    [[nodiscard]] QRect at(int column, int row) const
    {
        return QRect(column * tile.width(), row * tile.height(), tile.width(),
                     tile.height()) &
               QRect(QPoint(), grid);
    }
};

/// Tiles whose cells lie on so many cells of a mosaic that they are read at once.
[[nodiscard]] Result<WarpTiles> warpTiles(const Mosaic &mosaic, const OutputGrid &grid,
                                          Progress &progress);

/// One thread's means to warp rows of tiles into heights. These must live as long.
[[nodiscard]] Result<std::unique_ptr<PieceWorker>> makeWarpWorker(const Mosaic &mosaic,
                                                                  const OutputGrid &grid,
                                                                  const WarpTiles &tiles,
                                                                  Heights &heights);
