#include "geodata/crs.h"

#include "geodata/gdalruntime.h"

#include <QObject>

#include <cpl_conv.h>
#include <ogr_srs_api.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

struct WayDeleter {
    void operator()(void *way) const { OCTDestroyCoordinateTransformation(way); }
};
// From one reference system to another.
using Way = std::unique_ptr<void, WayDeleter>;

} // namespace

void SrsDeleter::operator()(void *srs) const { OSRDestroySpatialReference(srs); }

Srs systemOf(const QString &text)
{
    const GdalMessages messages;
    Srs srs(OSRNewSpatialReference(nullptr));
    if (text.isEmpty() ||
        OSRSetFromUserInput(srs.get(), text.toUtf8().constData()) != OGRERR_NONE)
        return nullptr;
    OSRSetAxisMappingStrategy(srs.get(), OAMS_TRADITIONAL_GIS_ORDER);
    return srs;
}

Result<QString> wktOf(const QString &code)
{
    const Srs srs = systemOf(code);
    char *text = nullptr;
    if (!srs || OSRExportToWkt(srs.get(), &text) != OGRERR_NONE)
        return failed(
            QObject::tr("\"%1\" is no reference system that is known.").arg(code));
    QString wkt = QString::fromUtf8(text);
    CPLFree(text);
    return wkt;
}

Result<QString> wktOfMap(const QString &code)
{
    Result<QString> wkt = wktOf(code);
    const Srs srs = wkt ? systemOf(*wkt) : nullptr;
    if (!srs)
        return wkt;
    const bool isOfHeights =
        OSRIsVertical(srs.get()) != 0 && OSRIsCompound(srs.get()) == 0;
    if (OSRIsGeocentric(srs.get()) != 0 || isOfHeights)
        return failed(
            QObject::tr("\"%1\" is no reference system in which maps lie.").arg(code));
    return wkt;
}

bool isSameCrs(const QString &one, const QString &other)
{
    if (one == other)
        return true;
    const Srs a = systemOf(one);
    const Srs b = systemOf(other);
    return a && b && OSRIsSame(a.get(), b.get()) != 0;
}

bool isGeographic(const QString &crs)
{
    const Srs srs = systemOf(crs);
    return srs && OSRIsGeographic(srs.get()) != 0;
}

double metresOfCrsUnit(const QString &crs)
{
    const Srs srs = systemOf(crs);
    if (!srs || OSRIsGeographic(srs.get()) != 0)
        return 1.0;
    const double metres = OSRGetLinearUnits(srs.get(), nullptr);
    return metres > 0.0 ? metres : 1.0;
}

QString shortNameOf(const QString &crs)
{
    const Srs srs = systemOf(crs);
    if (!srs)
        return {};
    const char *const authority = OSRGetAuthorityName(srs.get(), nullptr);
    const char *const code = OSRGetAuthorityCode(srs.get(), nullptr);
    if (authority && code)
        return QString::fromUtf8(authority) + QLatin1Char(':') + QString::fromUtf8(code);
    return QString::fromUtf8(OSRGetName(srs.get()));
}

QString utmOf(double longitude, double latitude)
{
    if (latitude > 84.0)
        return QStringLiteral("EPSG:32661");
    if (latitude < -80.0)
        return QStringLiteral("EPSG:32761");
    const double turned = longitude - 360.0 * std::floor((longitude + 180.0) / 360.0);
    const int zone = std::clamp(static_cast<int>((turned + 180.0) / 6.0) + 1, 1, 60);
    return QStringLiteral("EPSG:%1").arg((latitude < 0.0 ? 32700 : 32600) + zone);
}

Result<QList<QPointF>> toDegrees(const QList<QPointF> &places, const QString &crs)
{
    const GdalMessages messages;
    const Srs from = systemOf(crs);
    const Srs to = systemOf(QStringLiteral("EPSG:4326"));
    const Way way(from && to ? OCTNewCoordinateTransformation(from.get(), to.get())
                             : nullptr);
    std::vector<double> x;
    std::vector<double> y;
    for (const QPointF &place : places) {
        x.push_back(place.x());
        y.push_back(place.y());
    }
    const int count = static_cast<int>(places.size());
    if (!way || OCTTransform(way.get(), count, x.data(), y.data(), nullptr) == 0)
        return failed(QObject::tr("The longitude and latitude are not known: %1.")
                          .arg(messages.reason(QObject::tr("no way is known"))));
    QList<QPointF> degrees;
    for (std::size_t i = 0; i < x.size(); ++i)
        degrees.append({x[i], y[i]});
    return degrees;
}

Result<Extent> boundsIn(const QString &to, const Extent &extent, const QString &from)
{
    constexpr int PointsOfEdge = 21;
    if (isSameCrs(from, to))
        return extent;
    const GdalMessages messages;
    const Srs own = systemOf(from);
    const Srs wanted = systemOf(to);
    const Way way(own && wanted ? OCTNewCoordinateTransformation(own.get(), wanted.get())
                                : nullptr);
    Extent bounds;
    const bool done =
        way && OCTTransformBounds(way.get(), extent.west, extent.south, extent.east,
                                  extent.north, &bounds.west, &bounds.south, &bounds.east,
                                  &bounds.north, PointsOfEdge) != 0;
    if (!done)
        return failed(
            QObject::tr("The terrain cannot be brought to that reference system: %1.")
                .arg(messages.reason(QObject::tr("it lies outside of it"))));
    return bounds;
}

QString projectionTextOf(const QString &crs)
{
    // The kind of text that nearly all programs write into such files, and read.
    static constexpr std::array Options{"FORMAT=WKT1_ESRI",
                                        static_cast<const char *>(nullptr)};
    const GdalMessages messages;
    const Srs srs = systemOf(crs);
    char *text = nullptr;
    if (!srs || OSRExportToWktEx(srs.get(), &text, Options.data()) != OGRERR_NONE)
        return crs;
    QString wkt = QString::fromUtf8(text);
    CPLFree(text);
    return wkt;
}
