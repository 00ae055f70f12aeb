// The picture of the plan editor.
#include "patheditors/setflightpathdialog.h"

#include "flight/flightplan.h"
#include "flight/pathcurve.h"
#include "views/label.h"

#include <QPaintEvent>
#include <QPainterPath>

#include <cmath>

void SetFlightPathDialog::paintEventSlot(QPaintEvent *event)
{
    QPainter painter(imageWidget);
    paintTexture(painter, event->rect());
    if (controlPoints->isEmpty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    PathPainter paint(painter, icons, event->rect());
    const qint64 height = texturePixmap.height();
    for (const ControlPoint &p : std::as_const(*controlPoints))
        paint.drawControlPointIcon(qint64(p.x) - 11, height - p.y - 12);

    if (controlPoints->size() < CurveMinimum) {
        paintControlPointNumbers(paint);
        return;
    }
    // The only place where waypoints come by their positions in the plan.
    const QList<QPoint> curve = updatePlan(*controlPoints, *waypoints, *waypointLevel);
    paintCurve(paint, curve);
    paintWaypoints(paint);
    paintControlPointNumbers(paint);
    paintDirections(paint);
}

// On a screen of higher resolution each repaint would scale the texture anew, which takes
// longer than all the rest: what stays in sight is kept as it is shown. Where the
// resolution is a fraction, it depends on the place how pixels are rounded.
void SetFlightPathDialog::paintTexture(QPainter &painter, const QRect &part)
{
    const qreal resolution = imageWidget->devicePixelRatioF();
    const bool isSeenAgain =
        shownTexture.part == part && imageWidget->visibleRegion().boundingRect() == part;
    const bool isKept = isSeenAgain && !shownTexture.picture.isNull() &&
                        shownTexture.picture.devicePixelRatio() == resolution;
    if (resolution <= 1.0 || resolution != std::floor(resolution) || !isSeenAgain) {
        painter.drawPixmap(0, 0, texturePixmap);
        shownTexture = {part, {}};
        return;
    }
    if (!isKept) {
        QPixmap picture(part.size() * resolution);
        picture.setDevicePixelRatio(resolution);
        if (texturePixmap.hasAlphaChannel())
            picture.fill(Qt::transparent);
        QPainter(&picture).drawPixmap(-part.topLeft(), texturePixmap);
        shownTexture.picture = picture;
    }
    painter.drawPixmap(part.topLeft(), shownTexture.picture);
}

void SetFlightPathDialog::paintControlPointNumbers(PathPainter &paint) const
{
    const qint64 height = texturePixmap.height();
    paint.selectControlPointNumbers();
    for (qsizetype i = 0; i < controlPoints->size(); ++i) {
        const ControlPoint &p = controlPoints->at(i);
        paint.drawNumber(i, qint64(p.x) - 20, height - p.y - 21);
    }
}

void SetFlightPathDialog::paintCurve(PathPainter &paint, const QList<QPoint> &curve) const
{
    const double bottom = texturePixmap.height() - 1;
    QList<QPointF> line;
    line.reserve(curve.size());
    for (const QPoint &p : curve)
        line.append(PathPainter::onScreen(p.x(), bottom - p.y()));
    paint.strokeTwice(line, Qt::darkMagenta);
}

void SetFlightPathDialog::paintWaypoints(PathPainter &paint) const
{
    const qint64 height = texturePixmap.height();
    for (const Waypoint &w : std::as_const(*waypoints))
        paint.drawWaypointIcon(qint64(w.x) - 6, height - w.y - 7);
    paint.selectWaypointNumbers();
    for (qsizetype i = 0; i < waypoints->size(); ++i) {
        const Waypoint &w = waypoints->at(i);
        paint.drawNumber(i, qint64(w.x) - 20, height - w.y - 21);
    }
}

void SetFlightPathDialog::paintDirections(PathPainter &paint) const
{
    const double bottom = texturePixmap.height() - 1;
    QPainterPath lines;
    QList<QPoint> ends;
    ends.reserve(waypoints->size());
    for (const Waypoint &w : std::as_const(*waypoints)) {
        const QPointF direction = handleDirection(w.a);
        const double endX = w.x + std::trunc(HandleLength * direction.x());
        const double endY = bottom - (w.y - std::trunc(HandleLength * direction.y()));
        lines.moveTo(PathPainter::onScreen(w.x + HandleStart * direction.x(),
                                           bottom - (w.y - HandleStart * direction.y())));
        const QPointF end = PathPainter::onScreen(endX, endY);
        lines.lineTo(end);
        ends.append(end.toPoint());
    }
    paint.drawHandles(lines, Qt::blue, ends,
                      QStringLiteral(":/SetFlightPathDialog/viewingDirectionCircle.png"));
}
