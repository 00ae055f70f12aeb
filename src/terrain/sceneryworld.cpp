#include "terrain/sceneryworld.h"

#include "raster/imagefile.h"
#include "scene/inputfile.h"

#include <QDir>
#include <QObject>

#include <cmath>

namespace {

QString quoted(const QString &file)
{
    return QLatin1Char('"') + QDir::toNativeSeparators(file) + QLatin1Char('"');
}

double determinantOf(const GeoTransform &t) { return t[1] * t[5] - t[2] * t[4]; }

} // namespace

Result<SceneryGround> loadGround(const SceneryDocument &document, const QString &folder)
{
    const SceneryData &data = document.parameters;
    if (data.HDateiname.isEmpty())
        return failed(QObject::tr("The scenery has no elevation file."));
    SceneryGround ground;
    ground.file = findInputFile(data.HDateiname, folder);
    ground.picture =
        ElevationImage(ground.file, data.HDateiSkalaX, data.HDateiSkalaY, nullptr);
    if (ground.picture.isNull())
        return failed(
            QObject::tr("Could not open elevation file %1.").arg(quoted(ground.file)));
    auto georeference = readSidecars(ground.file, ground.picture.size());
    if (!georeference)
        return tl::unexpected(georeference.error());
    ground.georeference = std::move(*georeference);
    return ground;
}

Result<SceneryWorld> SceneryWorld::of(const SceneryDocument &document,
                                      const SceneryGround &ground)
{
    const SceneryData &data = document.parameters;
    const Georeference &earth = ground.georeference;
    const GeoTransform &t = earth.transform;
    if (!(std::fabs(determinantOf(t)) > 0.0))
        return failed(
            QObject::tr("The elevation file %1 has no georeference: there is no .pgw and "
                        "no .aux.xml beside it.")
                .arg(quoted(ground.file)));
    if (!(data.HDateiSkalaX > 0.0) || !(data.HDateiSkalaY > 0.0))
        return failed(QObject::tr("The x and y scale of the elevation file must be above "
                                  "0."));
    // World x is column * scale; world y counts from the middle of the lowest row.
    const double byX = 1.0 / data.HDateiSkalaX;
    const double byY = 1.0 / data.HDateiSkalaY;
    const double lowest = ground.picture.height() - 0.5;
    SceneryWorld world;
    world.m_toPlace = {t[0] + 0.5 * t[1] + lowest * t[2], t[1] * byX, -t[2] * byY,
                       t[3] + 0.5 * t[4] + lowest * t[5], t[4] * byX, -t[5] * byY};
    world.m_crs = earth.crs;
    const double unit = document.extras.MetresPerUnit;
    world.m_metresX = earth.metresX > 0.0 ? earth.metresX * byX : std::fmax(unit, 1.0);
    world.m_metresY = earth.metresY > 0.0 ? earth.metresY * byY : std::fmax(unit, 1.0);
    world.m_metresOfHeight = unit > 0.0 ? unit : world.m_metresX;
    world.m_metresPerStep = earth.metresPerHeightUnit;
    return world;
}

Failure noSystem(const SceneryGround &ground)
{
    return {QObject::tr("The elevation file %1 has no reference system: there is no .prj "
                        "and no .aux.xml that tells one beside it.")
                .arg(quoted(ground.file))};
}

QPointF SceneryWorld::placeAt(double x, double y) const
{
    const GeoTransform &t = m_toPlace;
    return {t[0] + x * t[1] + y * t[2], t[3] + x * t[4] + y * t[5]};
}

QPointF SceneryWorld::worldAt(const QPointF &place) const
{
    const GeoTransform &t = m_toPlace;
    const double dx = place.x() - t[0];
    const double dy = place.y() - t[3];
    const double determinant = determinantOf(t);
    return {(dx * t[5] - dy * t[2]) / determinant, (dy * t[1] - dx * t[4]) / determinant};
}

double SceneryWorld::unitsOfHeight(double zScale) const
{
    if (m_metresPerStep && zScale != 0.0)
        return zScale / *m_metresPerStep;
    return 1.0 / m_metresOfHeight;
}
