#include "geodata/warpworker.h"

#include <QObject>

#include <cpl_string.h>
#include <gdalwarper.h>

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

struct OperationDeleter {
    void operator()(void *operation) const { GDALDestroyWarpOperation(operation); }
};
using Operation = std::unique_ptr<void, OperationDeleter>;

// One layer, ready to be warped by one thread.
class LayerWarp {
public:
    [[nodiscard]] Result<bool> open(const Sheet &layer, const OutputGrid &grid,
                                    const std::vector<WarpScale> &scales)
    {
        Result<Dataset> source = openSheet(layer);
        if (!source)
            return tl::unexpected(source.error());
        m_source = std::move(*source);
        Result<std::unique_ptr<SmoothTransform>> way = wayTo(m_source.get(), grid);
        if (!way)
            return tl::unexpected(way.error());
        m_way = std::move(*way);
        m_resampling = grid.resampling;
        m_scales = &scales;
        m_operations.resize(scales.size());
        return true;
    }
    // Lays the layer on what the tile holds already.
    [[nodiscard]] Result<bool> warp(const QRect &tile, float *cells, PieceWatch &watch)
    {
        for (std::size_t i = 0; i < m_scales->size(); ++i) {
            const QRect part = tile & (*m_scales)[i].cells;
            if (part.isEmpty())
                continue;
            const Result<bool> done = part == tile
                                          ? warpWhole(i, tile, cells, watch)
                                          : warpPart(i, part, tile, cells, watch);
            if (!done)
                return done;
        }
        return true;
    }

private:
    Result<bool> warpWhole(std::size_t scale, const QRect &tile, float *cells,
                           PieceWatch &watch)
    {
        const GdalMessages messages;
        void *const operation = operationFor(scale, watch);
        if (operation && GDALWarpRegionToBuffer(operation, tile.x(), tile.y(),
                                                tile.width(), tile.height(), cells,
                                                GDT_Float32, 0, 0, 0, 0) == CE_None)
            return true;
        if (!watch.mayGoOn())
            return stopped();
        return failed(QObject::tr("Could not read the heights: %1.")
                          .arg(messages.reason(QObject::tr("a file is damaged"))));
    }
    // A part of a tile, by way of a buffer of its own.
    Result<bool> warpPart(std::size_t scale, const QRect &part, const QRect &tile,
                          float *cells, PieceWatch &watch)
    {
        const std::size_t width = std::size_t(part.width());
        m_part.resize(width * std::size_t(part.height()));
        const auto inTile = [&](int y) {
            return cells +
                   std::size_t(part.y() - tile.y() + y) * std::size_t(tile.width()) +
                   (part.x() - tile.x());
        };
        for (int y = 0; y < part.height(); ++y)
            std::copy_n(inTile(y), width, m_part.data() + std::size_t(y) * width);
        const Result<bool> done = warpWhole(scale, part, m_part.data(), watch);
        for (int y = 0; y < part.height(); ++y)
            std::copy_n(m_part.data() + std::size_t(y) * width, width, inTile(y));
        return done;
    }
    void *operationFor(std::size_t scale, PieceWatch &watch)
    {
        Operation &operation = m_operations[scale];
        if (operation)
            return operation.get();
        const WarpOptions options = warpOptions(m_source.get(), m_resampling, *m_way);
        const WarpScale &wanted = (*m_scales)[scale];
        if (wanted.x > 0.0 && wanted.y > 0.0) {
            // A kernel that shrinks reaches further.
            constexpr double Radius = 2.0;
            const double least = std::min({wanted.x, wanted.y, 1.0});
            const auto set = [&](const char *name, const QByteArray &value) {
                options->papszWarpOptions =
                    CSLSetNameValue(options->papszWarpOptions, name, value.constData());
            };
            set("XSCALE", QByteArray::number(wanted.x, 'g', 17));
            set("YSCALE", QByteArray::number(wanted.y, 'g', 17));
            set("SOURCE_EXTRA",
                QByteArray::number(static_cast<int>(std::ceil(Radius / least)) + 1));
        }
        options->pfnProgress = PieceWatch::gdalStep;
        options->pProgressArg = &watch; // the same in all work of a thread
        operation.reset(GDALCreateWarpOperation(options.get()));
        return operation.get();
    }

    Dataset m_source;
    std::unique_ptr<SmoothTransform> m_way;
    Resampling m_resampling = Resampling::Nearest;
    const std::vector<WarpScale> *m_scales = nullptr;
    std::vector<Operation> m_operations; // one for each scale
    std::vector<float> m_part;
};

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
            const Result<bool> done =
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
            const Result<bool> done = warpTile(m_tiles.at(column, row), watch);
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
            const Result<bool> done = layer.warp(tile, m_cells.data(), watch);
            if (!done)
                return done;
        }
        for (int y = 0; y < tile.height(); ++y)
            std::copy_n(m_cells.data() + std::size_t(y) * width, width,
                        m_heights.row(tile.y() + y) + tile.x());
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
    const Result<bool> opened = worker->open(mosaic, grid);
    if (!opened)
        return tl::unexpected(opened.error());
    return worker;
}
