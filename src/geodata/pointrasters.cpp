#include "geodata/pointrasters.h"

#include "geodata/crs.h"
#include "geodata/gdalruntime.h"
#include "geodata/tin.h"
#include "terrain/filekind.h"
#include "terrain/progressshare.h"

#include <QFileInfo>
#include <QObject>

#include <cpl_vsi.h>

#include <limits>

namespace {

// A file under a name of GDAL's, which may lie in an archive.
class GdalDevice final : public QIODevice {
public:
    explicit GdalDevice(VSILFILE *file) : m_file(file) {}
    ~GdalDevice() override { VSIFCloseL(m_file); }

    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 most) override
    {
        return qint64(VSIFReadL(data, 1, std::size_t(most), m_file));
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    VSILFILE *m_file;
};

Result<std::unique_ptr<QIODevice>> openText(const QString &name)
{
    if (!name.startsWith(QLatin1String("/vsi")))
        return openTextFile(name);
    VSILFILE *const file = VSIFOpenL(name.toUtf8().constData(), "rb");
    if (file == nullptr)
        return failed(QObject::tr("Could not open file \"%1\".").arg(name));
    auto device = std::make_unique<GdalDevice>(file);
    device->open(QIODevice::ReadOnly);
    return std::unique_ptr<QIODevice>(std::move(device));
}

// Where GDAL finds heights that are in memory; see its MEM driver.
QString nameInMemory(const Heights &heights)
{
    return QStringLiteral("MEM:::DATAPOINTER=0x%1,PIXELS=%2,LINES=%3,DATATYPE=Float32")
        .arg(reinterpret_cast<quintptr>(heights.metres.data()), 0, 16)
        .arg(heights.size.width())
        .arg(heights.size.height());
}

RasterFile rasterOf(PointSheet sheet, const QString &crs)
{
    RasterFile raster;
    raster.memory = std::make_shared<const Heights>(std::move(sheet.heights));
    raster.name = nameInMemory(*raster.memory);
    raster.size = raster.memory->size;
    raster.block = {raster.size.width(), 1};
    raster.transform = sheet.transform;
    raster.isPlaced = true;
    raster.crs = crs;
    raster.type = QStringLiteral("points");
    raster.noData = std::numeric_limits<double>::quiet_NaN();
    raster.notes = sheet.notes;
    raster.pointsRead = sheet.pointsRead;
    raster.pointsUsed = sheet.pointsUsed;
    return raster;
}

// Kinds of files in which heights of points are usual.
bool isVectorName(const QString &name)
{
    static const QStringList endings{"gpx", "kml",  "kmz", "geojson", "json",
                                     "shp", "gpkg", "gml", "dxf"};
    return endings.contains(QFileInfo(name).suffix().toLower());
}

} // namespace

PointKind pointKindOf(const QString &name)
{
    const GdalMessages messages;
    if (!notAFileText(name).isEmpty())
        return PointKind::None;
    GDALDriverH driver =
        GDALIdentifyDriverEx(name.toUtf8().constData(), GDAL_OF_RASTER, nullptr, nullptr);
    const QByteArray kind = driver == nullptr ? "" : GDALGetDriverShortName(driver);
    if (!kind.isEmpty() && kind != "XYZ")
        return PointKind::None;
    if (isVectorName(name) &&
        GDALIdentifyDriverEx(name.toUtf8().constData(), GDAL_OF_VECTOR, nullptr,
                             nullptr) != nullptr)
        return PointKind::Vectors;
    return holdsPoints(name, openText) ? PointKind::Text : PointKind::None;
}

Result<PointPreview> headOfPoints(const QString &name, const PointOptions &options)
{
    return lookAtPointFile(name, options, openText);
}

Result<QList<RasterFile>> rastersOfPoints(const QStringList &texts,
                                          const QStringList &vectors,
                                          const PointOptions &options, Progress &progress)
{
    constexpr qint64 Part = 1000;
    const qint64 all = (texts.size() + vectors.size()) * Part;
    const QString degrees = wktOf(QStringLiteral("EPSG:4326")).value_or(QString());
    QList<RasterFile> rasters;
    ProgressShare ofTexts(progress, 0, texts.size() * Part, all);
    auto sheets = readPointFiles(texts, options, ofTexts, openText);
    if (!sheets)
        return tl::unexpected(sheets.error());
    for (PointSheet &sheet : *sheets) {
        const QString crs = sheet.isGeographic ? degrees : QString();
        rasters.append(rasterOf(std::move(sheet), crs));
    }
    for (qsizetype i = 0; i < vectors.size(); ++i) {
        const qint64 done = (texts.size() + i) * Part;
        ProgressShare share(progress, done, done + Part, all);
        auto surface = surfaceOfVectors(vectors.at(i), options.longestEdge, share);
        if (!surface)
            return tl::unexpected(surface.error());
        rasters.append(rasterOf(std::move(surface->sheet), surface->crs));
    }
    return rasters;
}
