#include "geodata/vectorfile.h"

#include "geodata/crs.h"
#include "terrain/pointnames.h"

#include <QObject>

#include <cpl_conv.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include <cmath>

namespace {

struct FeatureDeleter {
    void operator()(void *feature) const { OGR_F_Destroy(feature); }
};
using Feature = std::unique_ptr<void, FeatureDeleter>;

struct GeometryDeleter {
    void operator()(void *geometry) const { OGR_G_DestroyGeometry(geometry); }
};
using Geometry = std::unique_ptr<void, GeometryDeleter>;

struct WayDeleter {
    void operator()(void *way) const { OCTDestroyCoordinateTransformation(way); }
};
using Way = std::unique_ptr<void, WayDeleter>;

// The driver leaves heights out of the coordinates unless it is told.
class HeightsOfGpx {
public:
    HeightsOfGpx() { CPLSetThreadLocalConfigOption(Key, "YES"); }
    ~HeightsOfGpx() { CPLSetThreadLocalConfigOption(Key, nullptr); }
    HeightsOfGpx(const HeightsOfGpx &) = delete;
    HeightsOfGpx &operator=(const HeightsOfGpx &) = delete;

private:
    static constexpr const char *Key = "GPX_ELE_AS_25D";
};

// Columns of a layer that say more of its shapes.
struct Columns {
    int name = -1;
    int height = -1;
    int time = -1;
};

Columns columnsOf(OGRLayerH layer)
{
    Columns columns;
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(layer);
    for (int i = 0; i < OGR_FD_GetFieldCount(definition); ++i) {
        OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
        const QByteArray name = OGR_Fld_GetNameRef(field);
        const OGRFieldType type = OGR_Fld_GetType(field);
        if (columns.name < 0 && type == OFTString && name.toLower() == "name")
            columns.name = i;
        if (columns.time < 0 && type == OFTDateTime)
            columns.time = i;
        const bool isNumber =
            type == OFTReal || type == OFTInteger || type == OFTInteger64;
        if (columns.height < 0 && isNumber &&
            meaningOfName(name.toStdString()) == PointColumn::Height)
            columns.height = i;
    }
    return columns;
}

bool hasValue(OGRFeatureH feature, int column)
{
    return column >= 0 && OGR_F_IsFieldSetAndNotNull(feature, column) != 0;
}

std::optional<double> timeOf(OGRFeatureH feature, int column)
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    float second = 0.0F;
    int zone = 0;
    if (!hasValue(feature, column) ||
        OGR_F_GetFieldAsDateTimeEx(feature, column, &year, &month, &day, &hour, &minute,
                                   &second, &zone) == 0)
        return {};
    // Only the order counts, so months of the same length do.
    constexpr double DaysOfMonth = 31.0;
    const double days = (year * 12.0 + month) * DaysOfMonth + day;
    return ((days * 24.0 + hour) * 60.0 + minute) * 60.0 + double(second);
}

// Reads one layer into a file.
class LayerReader {
public:
    LayerReader(OGRLayerH layer, Way way)
        : m_layer(layer), m_columns(columnsOf(layer)), m_way(std::move(way))
    {
    }

    [[nodiscard]] bool read(VectorFile &file, Progress &progress)
    {
        constexpr qint64 FeaturesBetweenSteps = 64;
        OGR_L_ResetReading(m_layer);
        for (qint64 count = 0;; ++count) {
            if (count % FeaturesBetweenSteps == 0 && !progress.step(0, 0))
                return false;
            const Feature feature(OGR_L_GetNextFeature(m_layer));
            if (!feature)
                return true;
            add(feature.get(), file);
        }
    }

private:
    void add(OGRFeatureH feature, VectorFile &file)
    {
        OGRGeometryH own = OGR_F_GetGeometryRef(feature);
        if (own == nullptr)
            return;
        // Arcs become lines.
        const Geometry geometry(OGR_G_GetLinearGeometry(own, 0.0, nullptr));
        if (!geometry || (m_way && OGR_G_Transform(geometry.get(), m_way.get()) != 0))
            return;
        m_fallback.reset();
        if (hasValue(feature, m_columns.height))
            m_fallback = OGR_F_GetFieldAsDouble(feature, m_columns.height);
        VectorShape shape;
        collect(geometry.get(), shape);
        if (shape.places.empty())
            return;
        if (hasValue(feature, m_columns.name))
            shape.name =
                QString::fromUtf8(OGR_F_GetFieldAsString(feature, m_columns.name));
        shape.time = timeOf(feature, m_columns.time);
        file.shapes.push_back(std::move(shape));
    }

    void collect(OGRGeometryH geometry, VectorShape &shape)
    {
        const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
        const int parts = OGR_G_GetGeometryCount(geometry);
        if (type == wkbPolygon) {
            if (parts > 0)
                collect(OGR_G_GetGeometryRef(geometry, 0), shape);
            return;
        }
        for (int i = 0; i < parts; ++i)
            collect(OGR_G_GetGeometryRef(geometry, i), shape);
        const int points = parts > 0 ? 0 : OGR_G_GetPointCount(geometry);
        shape.isLine |= points > 1;
        for (int i = 0; i < points; ++i)
            addPlace(geometry, i, shape);
    }

    void addPlace(OGRGeometryH geometry, int i, VectorShape &shape) const
    {
        VectorPlace place{OGR_G_GetX(geometry, i), OGR_G_GetY(geometry, i), m_fallback};
        const double z = OGR_G_GetZ(geometry, i);
        if (z != 0.0 && std::isfinite(z))
            place.metres = z;
        if (std::isfinite(place.x) && std::isfinite(place.y))
            shape.places.push_back(place);
    }

    OGRLayerH m_layer;
    Columns m_columns;
    Way m_way;
    std::optional<double> m_fallback; // height of the shape at hand
};

QString crsOf(OGRLayerH layer)
{
    OGRSpatialReferenceH srs = OGR_L_GetSpatialRef(layer);
    char *text = nullptr;
    if (srs == nullptr || OSRExportToWkt(srs, &text) != OGRERR_NONE)
        return {};
    QString wkt = QString::fromUtf8(text);
    CPLFree(text);
    return wkt;
}

// From the system of a layer to another; heights stay as they are. Null where none is
// needed.
Way wayFrom(const QString &own, const QString &wanted, bool *isMissing)
{
    *isMissing = false;
    if (own.isEmpty() || wanted.isEmpty() || isSameCrs(own, wanted))
        return nullptr;
    const Srs from = systemOf(own);
    const Srs to = systemOf(wanted);
    Way way(from && to ? OCTNewCoordinateTransformation(from.get(), to.get()) : nullptr);
    *isMissing = !way;
    return way;
}

} // namespace

Dataset openVector(const QString &file)
{
    startGdal();
    const QString lower = file.toLower();
    const bool isArchive =
        lower.endsWith(QLatin1String(".zip")) && !lower.startsWith(QLatin1String("/vsi"));
    const QString name = isArchive ? QStringLiteral("/vsizip/") + file : file;
    return Dataset(GDALOpenEx(name.toUtf8().constData(),
                              GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr,
                              nullptr));
}

Result<VectorFile> readVector(const QString &file, const QString &crs, Progress &progress)
{
    const GdalMessages messages;
    const HeightsOfGpx heights;
    const Dataset dataset = openVector(file);
    if (!dataset)
        return failed(QObject::tr("Could not read \"%1\": %2.")
                          .arg(file, messages.reason(QObject::tr(
                                         "it is no file of lines and points"))));
    VectorFile read;
    read.crs = crs;
    const int layers = GDALDatasetGetLayerCount(dataset.get());
    for (int i = 0; i < layers; ++i) {
        OGRLayerH layer = GDALDatasetGetLayer(dataset.get(), i);
        // The driver shows the points of lines a second time.
        const QByteArray name = OGR_L_GetName(layer);
        if (name == "track_points" || name == "route_points")
            continue;
        const QString own = crsOf(layer);
        read.hasSystem |= !own.isEmpty();
        if (read.crs.isEmpty())
            read.crs = own;
        bool isMissing = false;
        LayerReader reader(layer, wayFrom(own, read.crs, &isMissing));
        if (isMissing)
            return failed(QObject::tr("The places of \"%1\" cannot be brought to the "
                                      "terrain's reference system.")
                              .arg(file));
        if (!reader.read(read, progress))
            return stopped();
    }
    return read;
}
