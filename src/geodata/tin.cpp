#include "geodata/tin.h"

#include "geodata/crs.h"
#include "geodata/vectorfile.h"
#include "terrain/progressshare.h"

#include <QObject>

Result<VectorSurface> surfaceOfVectors(const QString &file, double longestEdge,
                                       Progress &progress)
{
    ProgressShare first(progress, 0, 50, 100);
    const auto read = readVector(file, {}, first);
    if (!read)
        return tl::unexpected(read.error());
    std::vector<GroundPoint> points;
    qint64 places = 0;
    for (const VectorShape &shape : read->shapes) {
        places += qint64(shape.places.size());
        for (const VectorPlace &place : shape.places)
            if (place.metres)
                points.push_back({place.x, place.y, *place.metres});
    }
    if (places > 0 && points.empty())
        return failed(QObject::tr("The points of \"%1\" have no heights.").arg(file));
    PointSheet sheet;
    sheet.files = QStringList{file};
    sheet.pointsRead = places;
    sheet.isGeographic = isGeographic(read->crs);
    if (const qint64 without = places - qint64(points.size()); without > 0)
        sheet.notes
            << QObject::tr("%1 points of \"%2\" have no height.").arg(without).arg(file);
    ProgressShare second(progress, 50, 100, 100);
    auto surface = surfaceOf(std::move(points), std::move(sheet), longestEdge, second);
    if (!surface)
        return tl::unexpected(surface.error());
    return VectorSurface{std::move(*surface), read->crs};
}
