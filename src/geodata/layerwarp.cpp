#include "geodata/layerwarp.h"

#include <QObject>

#include <cpl_string.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Fewer are read as soon as looked for.
constexpr double CellsWorthSkipping = 1e8;

// Whether a file's own numbers are heights in metres, and voids but those of one value
// cannot be.
bool isPlain(const RasterFile &raster)
{
    const bool isWhole = raster.type == QLatin1String("Int16") ||
                         raster.type == QLatin1String("UInt16") ||
                         raster.type == QLatin1String("Byte");
    return isWhole && raster.metresPerStep() == 1.0 && raster.metresAtZero() == 0.0 &&
           !raster.hasMask && raster.isPlaced;
}

bool liesAs(GDALDatasetH file, const Sheet &layer)
{
    GeoTransform transform{};
    return GDALGetGeoTransform(file, transform.data()) == CE_None &&
           transform == layer.transform &&
           layer.crs == QString::fromUtf8(GDALGetProjectionRef(file)) &&
           layer.size == QSize(GDALGetRasterXSize(file), GDALGetRasterYSize(file));
}

} // namespace

Result<bool> LayerWarp::openSource(const Sheet &layer)
{
    const RasterFile &raster = layer.rasters.front();
    m_name = raster.name;
    if (isPlain(raster)) {
        Result<Dataset> file = openRaster(raster.name);
        if (file && liesAs(file->get(), layer)) {
            m_source = std::move(*file);
            m_noData = raster.noData;
            m_maySkip =
                double(layer.size.width()) * layer.size.height() > CellsWorthSkipping;
            return true;
        }
    }
    Result<Dataset> source = openSheet(layer);
    if (!source)
        return tl::unexpected(source.error());
    m_source = std::move(*source);
    m_noData = std::numeric_limits<double>::quiet_NaN();
    return true;
}

Result<bool> LayerWarp::open(const Sheet &layer, const OutputGrid &grid,
                             const std::vector<WarpScale> &scales)
{
    Result<bool> opened = openSource(layer);
    if (!opened)
        return opened;
    Result<std::unique_ptr<SmoothTransform>> way = wayTo(m_source.get(), grid);
    if (!way)
        return tl::unexpected(way.error());
    m_way = std::move(*way);
    m_resampling = grid.resampling;
    m_scales = &scales;
    m_operations.resize(scales.size());
    return true;
}

Result<bool> LayerWarp::warp(const QRect &tile, float *cells, PieceWatch &watch)
{
    if (m_maySkip && layEmptiness(tile, cells))
        return true;
    for (std::size_t i = 0; i < m_scales->size(); ++i) {
        const QRect part = tile & (*m_scales)[i].cells;
        if (part.isEmpty())
            continue;
        Result<bool> done = part == tile ? warpWhole(i, tile, cells, watch)
                                         : warpPart(i, part, tile, cells, watch);
        if (!done)
            return done;
    }
    return true;
}

// The cells of the source that a tile is made of, with some more; none where that is not
// known.
QRect LayerWarp::sourceOf(const QRect &tile)
{
    constexpr int Steps = 6;
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i <= Steps; ++i)
        for (int j = 0; j <= Steps; ++j) {
            x.push_back(tile.x() + double(tile.width()) * i / Steps);
            y.push_back(tile.y() + double(tile.height()) * j / Steps);
        }
    std::vector<double> z(x.size(), 0.0);
    std::vector<int> ok(x.size(), 0);
    if (m_way->function()(m_way->data(), 1, static_cast<int>(x.size()), x.data(),
                          y.data(), z.data(), ok.data()) == 0 ||
        std::find(ok.begin(), ok.end(), 0) != ok.end())
        return {};
    const auto [left, right] = std::minmax_element(x.begin(), x.end());
    const auto [top, bottom] = std::minmax_element(y.begin(), y.end());
    // Kernels, and edges that bend, reach further.
    const double more = 16.0 + 4.0 * std::max((*right - *left) / tile.width(),
                                              (*bottom - *top) / tile.height());
    const auto inside = [](double place) {
        return static_cast<int>(std::clamp(place, -1e8, 1e9));
    };
    return {QPoint(inside(*left - more), inside(*top - more)),
            QPoint(inside(*right + more), inside(*bottom + more))};
}

// Parts that a sparse file leaves out need not be read: they are void, or flat.
bool LayerWarp::layEmptiness(const QRect &tile, float *cells)
{
    const QRect whole(0, 0, GDALGetRasterXSize(m_source.get()),
                      GDALGetRasterYSize(m_source.get()));
    // Of a file that does not tell its voids itself they hold 0.
    GDALRasterBandH band = GDALGetRasterBand(m_source.get(), 1);
    int isVoid = 0;
    GDALGetRasterNoDataValue(band, &isVoid);
    const QRect source = sourceOf(tile);
    const QRect part = source & whole;
    if (source.isEmpty() || part.isEmpty() || (isVoid == 0 && part != source))
        return false;
    const int status =
        GDALGetDataCoverageStatus(band, part.x(), part.y(), part.width(), part.height(),
                                  GDAL_DATA_COVERAGE_STATUS_DATA, nullptr);
    if (status != GDAL_DATA_COVERAGE_STATUS_EMPTY)
        return false;
    if (isVoid == 0)
        std::fill_n(cells, std::size_t(tile.width()) * std::size_t(tile.height()), 0.0F);
    return true;
}

Result<bool> LayerWarp::warpWhole(std::size_t scale, const QRect &tile, float *cells,
                                  PieceWatch &watch)
{
    const GdalMessages messages;
    void *const operation = operationFor(scale, watch);
    if (operation &&
        GDALWarpRegionToBuffer(operation, tile.x(), tile.y(), tile.width(), tile.height(),
                               cells, GDT_Float32, 0, 0, 0, 0) == CE_None)
        return true;
    if (!watch.mayGoOn())
        return stopped();
    return failed(QObject::tr("Could not read \"%1\": %2.")
                      .arg(m_name, messages.reason(QObject::tr("it is damaged"))));
}

// A part of a tile, by way of a buffer of its own.
Result<bool> LayerWarp::warpPart(std::size_t scale, const QRect &part, const QRect &tile,
                                 float *cells, PieceWatch &watch)
{
    const std::size_t width = std::size_t(part.width());
    m_part.resize(width * std::size_t(part.height()));
    const auto inTile = [&](int y) {
        return cells + std::size_t(part.y() - tile.y() + y) * std::size_t(tile.width()) +
               (part.x() - tile.x());
    };
    for (int y = 0; y < part.height(); ++y)
        std::copy_n(inTile(y), width, m_part.data() + std::size_t(y) * width);
    Result<bool> done = warpWhole(scale, part, m_part.data(), watch);
    for (int y = 0; y < part.height(); ++y)
        std::copy_n(m_part.data() + std::size_t(y) * width, width, inTile(y));
    return done;
}

void *LayerWarp::operationFor(std::size_t scale, PieceWatch &watch)
{
    Operation &operation = m_operations[scale];
    if (operation)
        return operation.get();
    const WarpOptions options =
        warpOptions(m_source.get(), m_noData, m_resampling, *m_way);
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
    options->pProgressArg = &watch;
    operation.reset(GDALCreateWarpOperation(options.get()));
    return operation.get();
}
