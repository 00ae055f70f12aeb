#include "geodata/rasterfile.h"

#include "geodata/crs.h"
#include "geodata/mosaic.h"
#include "geodata/netcdfhead.h"

#include <QFileInfo>
#include <QHash>
#include <QObject>

#include <cpl_string.h>
#include <cpl_vsi.h>
#include <ogr_srs_api.h>

#include <cmath>

namespace {

Dataset openNamed(const QString &name)
{
    return Dataset(GDALOpenEx(name.toUtf8().constData(),
                              GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR,
                              nullptr, nullptr, nullptr));
}

// Of a file that holds several rasters, such as NetCDF.
Dataset largestPart(GDALDatasetH whole)
{
    char **const parts = GDALGetMetadata(whole, "SUBDATASETS");
    Dataset largest;
    qint64 most = 0;
    for (int i = 1;; ++i) {
        const char *const name =
            CSLFetchNameValue(parts, QByteArray("SUBDATASET_%1_NAME")
                                         .replace("%1", QByteArray::number(i))
                                         .constData());
        if (!name)
            return largest;
        Dataset part = openNamed(QString::fromUtf8(name));
        if (!part || GDALGetRasterCount(part.get()) == 0)
            continue;
        const qint64 cells =
            qint64(GDALGetRasterXSize(part.get())) * GDALGetRasterYSize(part.get());
        if (cells > most) {
            most = cells;
            largest = std::move(part);
        }
    }
}

bool isPicture(GDALDatasetH file)
{
    return GDALGetRasterCount(file) >= 3 &&
           GDALGetRasterDataType(GDALGetRasterBand(file, 1)) == GDT_Byte;
}

// Heights of a system with a vertical part are in its unit.
QString verticalUnit(const char *wkt)
{
    const Srs srs = systemOf(QString::fromUtf8(wkt));
    if (!srs || !OSRIsCompound(srs.get()))
        return {};
    char *unit = nullptr;
    OSRGetTargetLinearUnits(srs.get(), "COMPD_CS|VERT_CS", &unit);
    return QString::fromUtf8(unit);
}

// Whether cells have a size, and their places can be told apart.
bool isUsable(const GeoTransform &t, const QSize &size)
{
    constexpr double Farthest = 1e12;
    constexpr double Finest = 1e-12;
    for (const int column : {0, size.width()})
        for (const int row : {0, size.height()})
            for (const int axis : {0, 3}) {
                const double place = t[std::size_t(axis)] +
                                     column * t[std::size_t(axis) + 1] +
                                     row * t[std::size_t(axis) + 2];
                if (!(std::abs(place) <= Farthest))
                    return false;
            }
    return std::abs(t[1] * t[5] - t[2] * t[4]) > Finest * Finest;
}

// A file of metres whose system counts in degrees, by a mistake or a wrong file beside
// it.
void leaveOutOtherDegrees(RasterFile &raster)
{
    constexpr double MostLatitude = 92.0; // with half a cell beyond the pole
    constexpr double MostLongitude = 720.0;
    if (!raster.isPlaced || raster.crs.isEmpty() || !isGeographic(raster.crs))
        return;
    const Extent extent = extentOf(raster);
    if (extent.south >= -MostLatitude && extent.north <= MostLatitude &&
        extent.west >= -MostLongitude && extent.east <= MostLongitude)
        return;
    raster.crs.clear();
    raster.notes.append(QObject::tr("The coordinates of \"%1\" are no longitudes and "
                                    "latitudes, as its reference system has them, which "
                                    "is left out.")
                            .arg(raster.name));
}

void readPlace(GDALDatasetH file, RasterFile &raster)
{
    constexpr GeoTransform Cells{0.0, 1.0, 0.0, 0.0, 0.0, -1.0};
    raster.crs = QString::fromUtf8(GDALGetProjectionRef(file));
    raster.isPlaced = GDALGetGeoTransform(file, raster.transform.data()) == CE_None;
    const int points = GDALGetGCPCount(file);
    if (!raster.isPlaced && points > 0 &&
        GDALGCPsToGeoTransform(points, GDALGetGCPs(file), raster.transform.data(), 0)) {
        raster.isPlaced = true;
        raster.crs = QString::fromUtf8(GDALGetGCPProjection(file));
    }
    if (raster.isPlaced && !isUsable(raster.transform, raster.size)) {
        raster.isPlaced = false;
        raster.notes.append(QObject::tr("The georeference of \"%1\" is of no use and is "
                                        "left out.")
                                .arg(raster.name));
    }
    if (!raster.isPlaced) {
        if (!raster.crs.isEmpty() && raster.notes.isEmpty())
            raster.notes.append(
                QObject::tr("\"%1\" does not tell where it lies.").arg(raster.name));
        raster.transform = Cells;
        raster.crs.clear();
    }
    leaveOutOtherDegrees(raster);
}

void readHeights(GDALRasterBandH band, RasterFile &raster)
{
    int known = 0;
    raster.type = QString::fromUtf8(GDALGetDataTypeName(GDALGetRasterDataType(band)));
    raster.overviews = GDALGetOverviewCount(band);
    raster.hasMask = (GDALGetMaskFlags(band) & (GMF_PER_DATASET | GMF_ALPHA)) != 0;
    int blockX = 0;
    int blockY = 0;
    GDALGetBlockSize(band, &blockX, &blockY);
    raster.block = {blockX, blockY};
    const double noData = GDALGetRasterNoDataValue(band, &known);
    if (known != 0)
        raster.noData = noData;
    const double scale = GDALGetRasterScale(band, &known);
    if (known != 0 && std::isfinite(scale) && scale != 0.0)
        raster.scale = scale;
    const double offset = GDALGetRasterOffset(band, &known);
    if (known != 0 && std::isfinite(offset))
        raster.offset = offset;
    raster.unit = QString::fromUtf8(GDALGetRasterUnitType(band)).trimmed();
    if (raster.unit.isEmpty())
        raster.unit = verticalUnit(raster.crs.toUtf8().constData());
    raster.metres = metresOfUnit(raster.unit).value_or(1.0);
}

// Whether a file that keeps its cells as they are, and whose reader takes what is missing
// for zeros, is shorter than they are.
bool isCutOff(GDALDatasetH file)
{
    const QByteArray driver = GDALGetDriverShortName(GDALGetDatasetDriver(file));
    if (driver != "netCDF" && driver != "ENVI")
        return false;
    const CPLStringList names(GDALGetFileList(file), TRUE);
    VSILFILE *const bytes = names.empty() ? nullptr : VSIFOpenL(names[0], "rb");
    if (!bytes)
        return false;
    constexpr qsizetype MostOfHead = 1 << 20;
    QByteArray head(MostOfHead, '\0');
    head.resize(qsizetype(VSIFReadL(head.data(), 1, std::size_t(head.size()), bytes)));
    VSIFSeekL(bytes, 0, SEEK_END);
    const auto length = qint64(VSIFTellL(bytes));
    VSIFCloseL(bytes);
    if (const auto told = lengthOfNetCdf(head); driver == "netCDF" && told)
        return length < *told;
    const bool isPlain = driver == "ENVI" ? !head.startsWith("\x1f\x8b") // gzip
                                          : head.startsWith("CDF");
    const GDALDataType type = GDALGetRasterDataType(GDALGetRasterBand(file, 1));
    const qint64 needed = qint64(GDALGetRasterXSize(file)) * GDALGetRasterYSize(file) *
                          GDALGetDataTypeSizeBytes(type);
    return isPlain && length < needed;
}

} // namespace

std::optional<double> metresOfUnit(const QString &unit)
{
    constexpr double Foot = 0.3048;
    constexpr double SurveyFoot = 1200.0 / 3937.0;
    static const QHash<QString, double> known{{"", 1.0},
                                              {"m", 1.0},
                                              {"metre", 1.0},
                                              {"meter", 1.0},
                                              {"metres", 1.0},
                                              {"meters", 1.0},
                                              {"ft", Foot},
                                              {"foot", Foot},
                                              {"feet", Foot},
                                              {"us-ft", SurveyFoot},
                                              {"sfoot", SurveyFoot},
                                              {"ussurveyfoot", SurveyFoot},
                                              {"ussurveyfeet", SurveyFoot},
                                              {"footus", SurveyFoot},
                                              {"ftus", SurveyFoot},
                                              {"footusurvey", SurveyFoot},
                                              {"internationalfoot", Foot},
                                              {"km", 1000.0},
                                              {"kilometre", 1000.0},
                                              {"kilometer", 1000.0},
                                              {"dm", 0.1},
                                              {"decimetre", 0.1},
                                              {"decimeter", 0.1},
                                              {"cm", 0.01},
                                              {"centimetre", 0.01},
                                              {"centimeter", 0.01},
                                              {"mm", 0.001},
                                              {"millimetre", 0.001},
                                              {"millimeter", 0.001},
                                              {"yd", 0.9144},
                                              {"yard", 0.9144},
                                              {"fathom", 1.8288}};
    QString key = unit.toLower();
    key.remove(u' ').remove(u'_').remove(u'.').remove(u'(').remove(u')');
    if (key.startsWith(QLatin1String("us")) && key != QLatin1String("us-ft"))
        key.remove(u'-');
    const auto it = known.constFind(key);
    return it == known.cend() ? std::nullopt : std::optional<double>(*it);
}

Result<Dataset> openRaster(const QString &name)
{
    const GdalMessages messages;
    Dataset file = openNamed(name);
    if (file && GDALGetRasterCount(file.get()) == 0)
        file = largestPart(file.get());
    const auto refuse = [&name](const QString &reason) {
        return failed(QObject::tr("Could not read \"%1\": %2.").arg(name, reason));
    };
    if (!file)
        return refuse(messages.reason(QObject::tr("it is no raster that GDAL knows")));
    if (isPicture(file.get()))
        return refuse(QObject::tr("it holds the colours of a picture, no heights"));
    if (isCutOff(file.get()))
        return refuse(QObject::tr("it is cut off"));
    return file;
}

Result<RasterFile> describeRaster(const QString &name)
{
    const GdalMessages messages;
    const Result<Dataset> file = openRaster(name);
    if (!file)
        return tl::unexpected(file.error());
    RasterFile raster;
    raster.name = QString::fromUtf8(GDALGetDescription(file->get()));
    raster.size = {GDALGetRasterXSize(file->get()), GDALGetRasterYSize(file->get())};
    readPlace(file->get(), raster);
    readHeights(GDALGetRasterBand(file->get(), 1), raster);
    return raster;
}
