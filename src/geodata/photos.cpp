#include "geodata/photos.h"

#include "base/memorybudget.h"
#include "geodata/mosaic.h"
#include "geodata/pieces.h"
#include "geodata/warp.h"
#include "terrain/filekind.h"

#include <QFileInfo>
#include <QObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

// Of a warped virtual raster; a window takes some milliseconds.
constexpr int BlockWidth = 512;
constexpr int BlockHeight = 128;

QString number(double value) { return QString::number(value, 'g', 17); }

auto refused(const QString &file, const QString &reason)
{
    return failed(QObject::tr("Could not read \"%1\": %2.").arg(file, reason));
}

bool isPlaced(GDALDatasetH file)
{
    GeoTransform transform{};
    return GDALGetGeoTransform(file, transform.data()) == CE_None ||
           GDALGetGCPCount(file) > 0;
}

// Whether a file with a world file alone counts in longitudes and latitudes: it may, and
// in the system of the terrain it would lie beside it.
bool isInDegrees(GDALDatasetH file, const Extent &terrain)
{
    RasterFile raster;
    raster.size = {GDALGetRasterXSize(file), GDALGetRasterYSize(file)};
    if (GDALGetGeoTransform(file, raster.transform.data()) != CE_None)
        return false;
    const Extent extent = extentOf(raster);
    const bool meets = extent.west < terrain.east && terrain.west < extent.east &&
                       extent.south < terrain.north && terrain.south < extent.north;
    return !meets && extent.west >= -360.0 && extent.east <= 360.0 &&
           extent.south >= -90.5 && extent.north <= 90.5;
}

// What gdal_translate is to do so that a file has red, green and blue bytes.
QStringList colourArguments(GDALDatasetH file)
{
    QStringList arguments{"-of", "VRT"};
    GDALRasterBandH first = GDALGetRasterBand(file, 1);
    const int bands = GDALGetRasterCount(file);
    if (GDALGetRasterColorTable(first))
        return arguments << "-expand"
                         << "rgba";
    const auto isAlpha = [&](int band) {
        return bands >= band && GDALGetRasterColorInterpretation(
                                    GDALGetRasterBand(file, band)) == GCI_AlphaBand;
    };
    const bool isGray = bands < 3;
    for (const char *band : {"1", isGray ? "1" : "2", isGray ? "1" : "3"})
        arguments << "-b" << band;
    const int alpha = isGray ? 2 : 4;
    if (isAlpha(alpha))
        arguments << "-b" << QString::number(alpha);
    if (GDALGetRasterDataType(first) == GDT_Byte)
        return arguments;
    std::array<double, 2> range{0.0, 65535.0};
    GDALComputeRasterMinMax(first, 1, range.data());
    arguments << "-ot"
              << "Byte"
              << "-scale" << number(range[0]) << number(range[1]) << "0"
              << "255";
    return arguments;
}

// A photograph on the rectangle of a grid, not read yet; of its own size where `size` is
// empty.
Result<Dataset> placed(const QString &file, const OutputGrid &grid, const QSize &size)
{
    // Some formats are folders.
    if (const QString other = notAFileText(file);
        !other.isEmpty() && !QFileInfo(file).isDir())
        return failed(other);
    const GdalMessages messages;
    const Dataset photo(GDALOpenEx(file.toUtf8().constData(),
                                   GDAL_OF_RASTER | GDAL_OF_VERBOSE_ERROR, nullptr,
                                   nullptr, nullptr));
    if (!photo || GDALGetRasterCount(photo.get()) == 0)
        return refused(file, messages.reason(QObject::tr("it is no picture")));
    if (!isPlaced(photo.get()))
        return refused(file, QObject::tr("it has no georeference, so that its place is "
                                         "not known"));
    const Dataset colours = translated(photo.get(), colourArguments(photo.get()));
    if (!colours)
        return refused(file, messages.reason(QObject::tr("GDAL refuses")));
    const Extent extent = grid.extent();
    QStringList arguments{"-of",
                          "VRT",
                          "-te",
                          number(extent.west),
                          number(extent.south),
                          number(extent.east),
                          number(extent.north)};
    if (!grid.crs.isEmpty()) {
        arguments << "-t_srs" << grid.crs;
        const QByteArray own = GDALGetProjectionRef(photo.get());
        if (own.isEmpty() && GDALGetGCPCount(photo.get()) == 0)
            arguments << "-s_srs"
                      << (isInDegrees(photo.get(), extent) ? QStringLiteral("EPSG:4326")
                                                           : grid.crs);
    }
    arguments << "-dstalpha"
              << "-r" << (size.isEmpty() ? "near" : "cubic");
    if (!size.isEmpty())
        arguments << "-ts" << QString::number(size.width())
                  << QString::number(size.height());
    Dataset warp = warped({colours.get()}, arguments, nullptr);
    if (!warp)
        return refused(file, messages.reason(QObject::tr("GDAL refuses")));
    return warp;
}

// Lays the bytes of red, green, blue and opacity of a photograph on what is there.
void lay(const std::vector<std::uint8_t> &bytes, const QRect &window, uchar *pixels,
         qsizetype bytesPerLine)
{
    constexpr std::uint8_t HalfOpaque = 128;
    const std::uint8_t *from = bytes.data();
    for (int y = window.top(); y <= window.bottom(); ++y) {
        auto *const row = reinterpret_cast<QRgb *>(pixels + y * bytesPerLine);
        for (int x = window.left(); x <= window.right(); ++x, from += 4)
            if (from[3] >= HalfOpaque)
                row[x] = qRgba(from[0], from[1], from[2], 255);
    }
}

class PhotoWorker final : public PieceWorker {
public:
    PhotoWorker(std::vector<Dataset> photos, QImage &picture)
        : m_photos(std::move(photos)), m_size(picture.size()), m_pixels(picture.bits()),
          m_bytesPerLine(picture.bytesPerLine())
    {
    }
    [[nodiscard]] Result<bool> work(int piece, PieceWatch &watch) override
    {
        for (int x = 0; x < m_size.width(); x += BlockWidth) {
            if (!watch.mayGoOn())
                return stopped();
            const QRect window = QRect(x, piece * BlockHeight, BlockWidth, BlockHeight) &
                                 QRect(QPoint(), m_size);
            for (const Dataset &photo : m_photos)
                if (Result<bool> done = readWindow(photo.get(), window); !done)
                    return done;
        }
        return true;
    }

private:
    Result<bool> readWindow(GDALDatasetH photo, const QRect &window)
    {
        constexpr int Bands = 4;
        const GdalMessages messages;
        m_bytes.resize(std::size_t(window.width()) * std::size_t(window.height()) *
                       Bands);
        if (GDALDatasetRasterIO(photo, GF_Read, window.x(), window.y(), window.width(),
                                window.height(), m_bytes.data(), window.width(),
                                window.height(), GDT_Byte, Bands, nullptr, Bands,
                                Bands * window.width(), 1) != CE_None)
            return failed(QObject::tr("Could not read a photograph: %1.")
                              .arg(messages.reason(QObject::tr("it is damaged"))));
        lay(m_bytes, window, m_pixels, m_bytesPerLine);
        return true;
    }

    std::vector<Dataset> m_photos;
    QSize m_size;
    uchar *m_pixels; // of a picture that nobody copies meanwhile
    qsizetype m_bytesPerLine;
    std::vector<std::uint8_t> m_bytes;
};

// Whether some pixel of a picture is opaque, or not.
bool hasPixels(const QImage &picture, bool opaque)
{
    for (int y = 0; y < picture.height(); ++y) {
        const auto *const row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        if (std::any_of(row, row + picture.width(),
                        [opaque](QRgb pixel) { return (qAlpha(pixel) != 0) == opaque; }))
            return true;
    }
    return false;
}

} // namespace

Result<QSize> photoSizeOn(const QStringList &files, const OutputGrid &grid)
{
    QSize finest = grid.size;
    QSize all;
    for (const QString &file : files) {
        const Result<Dataset> photo = placed(file, grid, {});
        if (!photo)
            return tl::unexpected(photo.error());
        all = all.expandedTo(
            {GDALGetRasterXSize(photo->get()), GDALGetRasterYSize(photo->get())});
    }
    if (!all.isEmpty())
        finest = all;
    const int longest = std::max(finest.width(), finest.height());
    if (longest <= MostPhotoCells)
        return finest;
    const auto side = [longest](int cells) {
        return std::max(static_cast<int>(qint64(cells) * MostPhotoCells / longest), 1);
    };
    return QSize(side(finest.width()), side(finest.height()));
}

Result<QImage> photoOn(const QStringList &files, const OutputGrid &grid,
                       const QSize &size, Progress &progress)
{
    constexpr qint64 BytesOfPixel = 4;
    QImage picture;
    if (fitsMemory(BytesOfPixel * size.width() * size.height()))
        picture = QImage(size, QImage::Format_ARGB32);
    if (picture.isNull())
        return failed(QObject::tr("There is not enough memory for a texture of %1 x %2.")
                          .arg(size.width())
                          .arg(size.height()));
    picture.fill(0);
    const auto make = [&]() -> Result<std::unique_ptr<PieceWorker>> {
        std::vector<Dataset> photos;
        for (const QString &file : files) {
            Result<Dataset> photo = placed(file, grid, size);
            if (!photo)
                return tl::unexpected(photo.error());
            photos.push_back(std::move(*photo));
        }
        return std::make_unique<PhotoWorker>(std::move(photos), picture);
    };
    const int pieces = (size.height() + BlockHeight - 1) / BlockHeight;
    Result<bool> done = workOnPieces(pieces, make, progress);
    if (!done)
        return tl::unexpected(done.error());
    if (!hasPixels(picture, true))
        return failed(QObject::tr("\"%1\" does not lie on this part of the terrain.")
                          .arg(files.join(QLatin1String("\", \""))));
    if (!hasPixels(picture, false))
        picture.reinterpretAsFormat(QImage::Format_RGB32);
    return picture;
}
