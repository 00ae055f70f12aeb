#include "geodata/sheetreader.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <limits>

/// What is read at once: a stretch of a band, at a size.
struct SheetReader::Window {
    QRect cells;
    QRectF exact; // where it is not whole cells
    QSize size;
};

namespace {

constexpr float Void = std::numeric_limits<float>::quiet_NaN();

CPLErr readInto(GDALRasterBandH band, const QRect &cells, const QRectF &exact,
                const QSize &size, void *to, GDALDataType type, GSpacing rowBytes)
{
    GDALRasterIOExtraArg extra;
    INIT_RASTERIO_EXTRA_ARG(extra);
    extra.bFloatingPointWindowValidity = 1;
    extra.dfXOff = exact.x();
    extra.dfXSize = exact.width();
    extra.dfYOff = exact.y();
    extra.dfYSize = exact.height();
    return GDALRasterIOEx(band, GF_Read, cells.x(), cells.y(), cells.width(),
                          cells.height(), to, size.width(), size.height(), type, 0,
                          rowBytes, &extra);
}

// Whether a float holds every number of a type.
bool fitsFloat(const QString &type)
{
    return type == QLatin1String("Byte") || type == QLatin1String("Int16") ||
           type == QLatin1String("UInt16") || type == QLatin1String("Float32");
}

// One row of stored numbers to metres.
template <typename Stored>
void convertRow(const Stored *from, int count, const RasterFile &raster, float *to)
{
    const bool hasVoid = raster.noData.has_value();
    const auto voidValue = static_cast<Stored>(raster.noData.value_or(0.0));
    const double step = raster.metresPerStep();
    const double zero = raster.metresAtZero();
    const bool scales = step != 1.0 || zero != 0.0;
    for (int x = 0; x < count; ++x) {
        const Stored value = from[x];
        const float metres =
            static_cast<float>(scales ? static_cast<double>(value) * step + zero
                                      : static_cast<double>(value));
        const bool isVoid = (hasVoid && value == voidValue) || !std::isfinite(metres);
        to[x] = isVoid ? Void : metres;
    }
}

// A part of an axis at another size.
struct Stretch {
    double from = 0.0; // in cells
    double length = 0.0;
    int first = 0; // whole cells that hold it
    int count = 0;
};

Stretch stretchOf(int at, int length, int size, int cells)
{
    const double step = static_cast<double>(cells) / size;
    Stretch stretch;
    stretch.from = step * at;
    stretch.length = std::min(step * (at + length), double(cells)) - stretch.from;
    stretch.first = std::clamp(static_cast<int>(stretch.from), 0, cells - 1);
    const double end = std::ceil(stretch.from + stretch.length);
    stretch.count =
        std::clamp(static_cast<int>(end), stretch.first + 1, cells) - stretch.first;
    return stretch;
}

// The smallest overview that has at least as many cells as are wanted.
GDALRasterBandH fittingLevel(GDALRasterBandH band, const QSize &size)
{
    GDALRasterBandH best = band;
    for (int i = 0; i < GDALGetOverviewCount(band); ++i) {
        GDALRasterBandH level = GDALGetOverview(band, i);
        if (level && GDALGetRasterBandXSize(level) >= size.width() &&
            GDALGetRasterBandYSize(level) >= size.height() &&
            GDALGetRasterBandXSize(level) < GDALGetRasterBandXSize(best))
            best = level;
    }
    return best;
}

} // namespace

QSize windowOf(const Sheet &sheet)
{
    constexpr int Cells = 1 << 19;
    constexpr int Widest = 2048;
    const QSize block = sheet.rasters.front().block.expandedTo({1, 1});
    const auto multiple = [](int side, int most) {
        return side < most ? most / side * side : side;
    };
    const bool keepsRows = block.width() >= sheet.size.width();
    const int width = keepsRows ? sheet.size.width() : multiple(block.width(), Widest);
    const int most = std::max(Cells / width, 1);
    // A block that is larger than that is read in parts: it stays in memory.
    const int height = block.height() > 2 * most ? most : multiple(block.height(), most);
    return {width, height};
}

Result<std::unique_ptr<SheetReader>> SheetReader::open(const Sheet &sheet)
{
    std::unique_ptr<SheetReader> reader(new SheetReader);
    reader->m_size = sheet.size;
    reader->m_name = sheet.rasters.front().name;
    Result<Dataset> file = Dataset();
    if (sheet.rasters.size() == 1) {
        file = openRaster(reader->m_name);
        reader->m_raster = &sheet.rasters.front();
    } else {
        file = openSheet(sheet);
    }
    if (!file)
        return tl::unexpected(file.error());
    reader->m_file = std::move(*file);
    if (GDALGetRasterXSize(reader->m_file.get()) != sheet.size.width() ||
        GDALGetRasterYSize(reader->m_file.get()) != sheet.size.height())
        return failed(QObject::tr("\"%1\" has changed while it was read.")
                          .arg(sheet.rasters.front().name));
    return reader;
}

// Whether nothing has to be looked at but the numbers themselves.
bool SheetReader::isPlain() const { return !m_raster || fitsFloat(m_raster->type); }

Result<bool> SheetReader::read(const QRect &cells, float *to, std::size_t pitch)
{
    return readWindow(GDALGetRasterBand(m_file.get(), 1),
                      {cells, QRectF(cells), cells.size()}, to, pitch);
}

Result<bool> SheetReader::readShrunk(const QSize &size, const QRect &part, float *to,
                                     std::size_t pitch)
{
    GDALRasterBandH band = fittingLevel(GDALGetRasterBand(m_file.get(), 1), size);
    const Stretch x =
        stretchOf(part.x(), part.width(), size.width(), GDALGetRasterBandXSize(band));
    const Stretch y =
        stretchOf(part.y(), part.height(), size.height(), GDALGetRasterBandYSize(band));
    const QRect cells(x.first, y.first, x.count, y.count);
    return readWindow(band, {cells, {x.from, y.from, x.length, y.length}, part.size()},
                      to, pitch);
}

std::pair<int, int> SheetReader::rowsFor(const QSize &size) const
{
    GDALRasterBandH band = fittingLevel(GDALGetRasterBand(m_file.get(), 1), size);
    int width = 0;
    int height = 0;
    GDALGetBlockSize(band, &width, &height);
    return {GDALGetRasterBandYSize(band), height};
}

Result<bool> SheetReader::readWindow(GDALRasterBandH band, const Window &window,
                                     float *to, std::size_t pitch)
{
    const GdalMessages messages;
    if (readNumbers(band, window, to, pitch) &&
        (!m_raster || !m_raster->hasMask || dropMasked(band, window, to, pitch)))
        return true;
    return failed(QObject::tr("Could not read \"%1\": %2.")
                      .arg(m_name, messages.reason(QObject::tr("it is damaged"))));
}

bool SheetReader::readNumbers(GDALRasterBandH band, const Window &window, float *to,
                              std::size_t pitch)
{
    const int width = window.size.width();
    const bool plain = isPlain();
    if (plain) {
        if (readInto(band, window.cells, window.exact, window.size, to, GDT_Float32,
                     GSpacing(pitch * sizeof(float))) != CE_None)
            return false;
    } else {
        m_wide.resize(std::size_t(width) * std::size_t(window.size.height()));
        if (readInto(band, window.cells, window.exact, window.size, m_wide.data(),
                     GDT_Float64, 0) != CE_None)
            return false;
    }
    if (!m_raster)
        return true;
    for (int y = 0; y < window.size.height(); ++y) {
        float *const row = to + std::size_t(y) * pitch;
        if (plain)
            convertRow(row, width, *m_raster, row);
        else
            convertRow(m_wide.data() + std::size_t(y) * std::size_t(width), width,
                       *m_raster, row);
    }
    return true;
}

bool SheetReader::dropMasked(GDALRasterBandH band, const Window &window, float *to,
                             std::size_t pitch)
{
    const std::size_t width = std::size_t(window.size.width());
    m_mask.resize(width * std::size_t(window.size.height()));
    if (readInto(GDALGetMaskBand(band), window.cells, window.exact, window.size,
                 m_mask.data(), GDT_Byte, 0) != CE_None)
        return false;
    for (std::size_t y = 0; y < std::size_t(window.size.height()); ++y)
        for (std::size_t x = 0; x < width; ++x)
            if (m_mask[y * width + x] == 0)
                to[y * pitch + x] = Void;
    return true;
}
