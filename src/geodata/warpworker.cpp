#include "geodata/warpworker.h"

#include "geodata/layerwarp.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Cells of a mosaic that are read for a tile; four bytes each, and as many for a mask.
constexpr double MostCellsOfTile = 400000.0;
// Where a file keeps whole rows together, all columns of a row of tiles are read at once.
constexpr double MostCellsOfRows = 1500000.0;
constexpr int WidestTile = 512;
constexpr int HighestTile = 128;

class WarpWorker final : public PieceWorker {
public:
    WarpWorker(const WarpTiles &tiles, Heights &heights)
        : m_tiles(tiles), m_heights(heights)
    {
    }
    [[nodiscard]] Result<bool> open(const Mosaic &mosaic, const OutputGrid &grid)
    {
        m_layers = std::vector<LayerWarp>(mosaic.layers.size());
        for (std::size_t i = 0; i < m_layers.size(); ++i) {
            Result<bool> done =
                m_layers[i].open(mosaic.layers[i], grid, m_tiles.scales[i]);
            if (!done)
                return done;
        }
        return true;
    }
    [[nodiscard]] Result<bool> work(int row, PieceWatch &watch) override
    {
        for (int column = 0; column < m_tiles.columns(); ++column) {
            if (!watch.mayGoOn())
                return stopped();
            Result<bool> done = warpTile(m_tiles.at(column, row), watch);
            if (!done)
                return done;
        }
        return true;
    }

private:
    Result<bool> warpTile(const QRect &tile, PieceWatch &watch)
    {
        const std::size_t width = std::size_t(tile.width());
        m_cells.assign(width * std::size_t(tile.height()),
                       std::numeric_limits<float>::quiet_NaN());
        for (LayerWarp &layer : m_layers) {
            Result<bool> done = layer.warp(tile, m_cells.data(), watch);
            if (!done)
                return done;
        }
        // What is infinite is no height either.
        const auto known = [](float height) {
            return std::isfinite(height) ? height
                                         : std::numeric_limits<float>::quiet_NaN();
        };
        for (int y = 0; y < tile.height(); ++y) {
            const float *const from = m_cells.data() + std::size_t(y) * width;
            std::transform(from, from + width, m_heights.row(tile.y() + y) + tile.x(),
                           known);
        }
        return true;
    }

    const WarpTiles &m_tiles;
    Heights &m_heights;
    std::vector<LayerWarp> m_layers;
    std::vector<float> m_cells;
};

bool keepsRows(const RasterFile &raster)
{
    return raster.block.width() >= raster.size.width();
}

} // namespace

Result<WarpTiles> warpTiles(const Mosaic &mosaic, const OutputGrid &grid,
                            Progress &progress)
{
    WarpTiles tiles;
    tiles.grid = grid.size;
    double ratio = 1.0;
    double widest = 1.0; // of a row of cells that is read at once
    for (const Sheet &layer : mosaic.layers) {
        const Result<std::unique_ptr<SmoothTransform>> way =
            wayTo(layer.dataset.get(), grid);
        if (!way)
            return tl::unexpected(way.error());
        ratio = std::max(ratio, (*way)->cellsPerCell(grid.size, layer.size));
        if (keepsRows(layer.rasters.front()))
            widest = std::max(widest, static_cast<double>(layer.size.width()));
        Result<std::vector<WarpScale>> scales = warpScales(layer, grid, progress);
        if (!scales)
            return tl::unexpected(scales.error());
        tiles.scales.push_back(std::move(*scales));
    }
    const auto side = [](double cells, int most) {
        return static_cast<int>(std::clamp(std::floor(cells), 1.0, double(most)));
    };
    const int height = side(std::min(MostCellsOfRows / (widest * ratio),
                                     std::sqrt(MostCellsOfTile) / ratio / 2.0),
                            HighestTile);
    const int width = side(MostCellsOfTile / (ratio * ratio * height), WidestTile);
    tiles.tile = {width, height};
    return tiles;
}

Result<std::unique_ptr<PieceWorker>> makeWarpWorker(const Mosaic &mosaic,
                                                    const OutputGrid &grid,
                                                    const WarpTiles &tiles,
                                                    Heights &heights)
{
    auto worker = std::make_unique<WarpWorker>(tiles, heights);
    Result<bool> opened = worker->open(mosaic, grid);
    if (!opened)
        return tl::unexpected(opened.error());
    return worker;
}
