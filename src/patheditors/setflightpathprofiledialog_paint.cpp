// The picture of the profile editor.
#include "patheditors/setflightpathprofiledialog.h"

#include "base/truncate.h"
#include "raster/elevationimage.h"

#include <QPaintEvent>
#include <QPainterPath>

#include <cmath>

std::vector<TerrainPoint> SetFlightPathProfileDialog::terrain() const
{
    return terrainUnder(*controlPoints, [this](double x, double y) {
        return elevationImage->elevation(x, y) * zScaleA;
    });
}

void SetFlightPathProfileDialog::paintEvent(QPaintEvent *event)
{
    if (controlPoints->isEmpty())
        return;
    // Before the terrain, whose line lies between the stations.
    profileWidth = updateStations(*controlPoints);
    const std::vector<TerrainPoint> ground = terrain();
    const HeightExtent extent = heightExtent(*controlPoints, ground);
    zMax = extent.highest;
    zMin = extent.lowest;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PathPainter paint(painter, icons, event->rect());
    for (const ControlPoint &p : std::as_const(*controlPoints))
        paint.drawControlPointIcon(
            truncatedPlusHalf(p.i - 11 + static_cast<double>(offsetX())),
            baseline() - p.z - 11);
    if (controlPoints->size() >= CurveMinimum) {
        paintTerrain(paint, ground);
        paintCurve(paint, updateProfile(*controlPoints, *waypoints, *waypointLevel));
        paintWaypoints(paint);
        paintDirections(paint);
    }
    paintControlPointNumbers(paint);
    setScrollRanges();
}

void SetFlightPathProfileDialog::paintTerrain(PathPainter &paint,
                                              const std::vector<TerrainPoint> &line) const
{
    const double left = static_cast<double>(offsetX());
    const double base = static_cast<double>(baseline());
    QList<QPointF> ground;
    ground.reserve(static_cast<qsizetype>(line.size()));
    for (const TerrainPoint &p : line)
        ground.append(PathPainter::onScreen(left + p.station, base - p.height));
    paint.stroke(ground, Qt::black, 1);
}

void SetFlightPathProfileDialog::paintCurve(PathPainter &paint,
                                            const QList<QPoint> &curve) const
{
    const double left = static_cast<double>(offsetX());
    const double base = static_cast<double>(baseline());
    QList<QPointF> line;
    line.reserve(curve.size());
    for (const QPoint &p : curve)
        line.append(PathPainter::onScreen(left + p.x(), base - p.y()));
    paint.strokeTwice(line, Qt::darkMagenta);
}

void SetFlightPathProfileDialog::paintWaypoints(PathPainter &paint) const
{
    for (const Waypoint &w : std::as_const(*waypoints))
        paint.drawWaypointIcon(truncatedPlusHalf(w.i - 6) + offsetX(),
                               baseline() - w.z - 6);
    paint.selectWaypointNumbers();
    for (qsizetype i = 0; i < waypoints->size(); ++i) {
        const Waypoint &w = waypoints->at(i);
        paint.drawNumber(i, truncatedPlusHalf(w.i - 20) + offsetX(),
                         baseline() - w.z - 20);
    }
}

void SetFlightPathProfileDialog::paintDirections(PathPainter &paint) const
{
    const double left = static_cast<double>(offsetX());
    const double base = static_cast<double>(baseline());
    QPainterPath lines;
    QList<QPoint> ends;
    ends.reserve(waypoints->size());
    for (const Waypoint &w : std::as_const(*waypoints)) {
        const double along = std::cos(w.p);
        const double up = std::sin(w.p);
        lines.moveTo(PathPainter::onScreen(left + w.i + HandleStart * along,
                                           base - std::trunc(HandleStart * up + w.z)));
        const QPointF end =
            PathPainter::onScreen(left + truncatedPlusHalf(handleLength * along + w.i),
                                  base - truncatedPlusHalf(handleLength * up + w.z));
        lines.lineTo(end);
        ends.append(end.toPoint());
    }
    paint.drawHandles(
        lines, Qt::magenta, ends,
        QStringLiteral(":/SetFlightPathProfileDialog/viewingDirectionCircle.png"));
}

void SetFlightPathProfileDialog::paintControlPointNumbers(PathPainter &paint) const
{
    paint.selectControlPointNumbers();
    for (qsizetype i = 0; i < controlPoints->size(); ++i) {
        const ControlPoint &p = controlPoints->at(i);
        paint.drawNumber(i, truncatedPlusHalf(p.i - 20 + static_cast<double>(offsetX())),
                         baseline() - p.z - 20);
    }
}
