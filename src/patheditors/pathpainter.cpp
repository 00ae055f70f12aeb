#include "patheditors/pathpainter.h"

#include "patheditors/outlinefill.h"

#include <QPainterPath>
#include <QPainterPathStroker>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace {

constexpr int ControlPointSide = 23;
constexpr int WaypointSide = 13;
constexpr int NumberSide = 40;
constexpr int HandleIconSide = 6;
// Farther than any picture reaches. The rasterizer walks all rows that a line crosses.
constexpr double FarOut = 1 << 16;

// More than half the width of a line.
constexpr double SightMargin = 4.0;

QPen pathPen(Qt::GlobalColor colour, int width)
{
    return QPen(QColor(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QPainterPath pathOf(const QList<QPointF> &line)
{
    QPainterPath path;
    path.addPolygon(line);
    return path;
}

} // namespace

const QPixmap &PathIcons::icon(const QString &name, int side, qreal resolution)
{
    QPixmap &kept = m_icons[{name, side, resolution}];
    if (kept.isNull()) {
        const int pixels = qMax(1, qRound(side * resolution));
        QPixmap whole(name);
        if (whole.isNull())
            return kept;
        whole.setDevicePixelRatio(1.0);
        kept =
            whole.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        kept.setDevicePixelRatio(resolution);
    }
    return kept;
}

PathPainter::PathPainter(QPainter &painter, PathIcons &icons, const QRectF &visible)
    : m_painter(painter), m_icons(icons), m_visible(visible)
{
}

void PathPainter::drawIcon(const QString &name, int side, qint64 left, qint64 top)
{
    const QPointF corner(static_cast<double>(left), static_cast<double>(top));
    if (!m_visible.intersects(QRectF(corner, QSizeF(side, side))))
        return;
    m_painter.drawPixmap(
        corner, m_icons.icon(name, side, m_painter.device()->devicePixelRatioF()));
}

void PathPainter::drawControlPointIcon(qint64 left, qint64 top)
{
    drawIcon(QStringLiteral(":/SetFlightPathDialog/controlPointCircle.png"),
             ControlPointSide, left, top);
}

void PathPainter::drawWaypointIcon(qint64 left, qint64 top)
{
    drawIcon(QStringLiteral(":/SetFlightPathDialog/waypointCircle.png"), WaypointSide,
             left, top);
}

void PathPainter::drawNumber(qsizetype number, qint64 left, qint64 top)
{
    const QRectF box(static_cast<double>(left), static_cast<double>(top), NumberSide,
                     NumberSide);
    if (m_visible.intersects(box))
        m_painter.drawText(box, Qt::AlignCenter, QString::number(number));
}

// The painter has a quick way of its own for lines no wider than a pixel.
bool PathPainter::isFine(int width) const
{
    return width * m_painter.deviceTransform().m11() <= 1.0;
}

void PathPainter::stroke(const QPainterPath &path, Qt::GlobalColor colour, int width)
{
    const QPen pen = pathPen(colour, width);
    if (isFine(width))
        m_painter.strokePath(path, pen);
    else
        fillOutline(m_painter, QPainterPathStroker(pen).createStroke(path), pen.color(),
                    m_visible);
}

void PathPainter::stroke(const QList<QPointF> &line, Qt::GlobalColor colour, int width)
{
    if (isFine(width))
        stroke(pathOf(line), colour, width);
    else
        stroke(inSight(line), colour, width);
}

void PathPainter::strokeTwice(const QPainterPath &path, Qt::GlobalColor colour)
{
    stroke(path, Qt::white, 3);
    stroke(path, colour, 1);
}

void PathPainter::strokeTwice(const QList<QPointF> &line, Qt::GlobalColor colour)
{
    stroke(line, Qt::white, 3);
    stroke(line, colour, 1);
}

// The segments that reach into what is to be painted. The line's ends that this makes
// lie outside of it, so the picture is that of the whole line.
QPainterPath PathPainter::inSight(const QList<QPointF> &line) const
{
    const QRectF reach =
        m_visible.adjusted(-SightMargin, -SightMargin, SightMargin, SightMargin);
    QPainterPath path;
    bool inside = false;
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF &from = line.at(i - 1);
        const QPointF &to = line.at(i);
        const auto [left, right] = std::minmax({from.x(), to.x()});
        const auto [top, bottom] = std::minmax({from.y(), to.y()});
        if (right < reach.left() || left > reach.right() || bottom < reach.top() ||
            top > reach.bottom()) {
            inside = false;
            continue;
        }
        if (!inside)
            path.moveTo(from);
        inside = true;
        path.lineTo(to);
    }
    return path;
}

void PathPainter::drawHandles(const QPainterPath &lines, Qt::GlobalColor colour,
                              const QList<QPoint> &ends, const QString &icon)
{
    strokeTwice(lines, colour);
    for (const QPoint &end : ends)
        drawIcon(icon, HandleIconSide, end.x() - HandleIconSide / 2,
                 end.y() - HandleIconSide / 2);
}

void PathPainter::selectControlPointNumbers()
{
    m_painter.setPen(QColor(Qt::yellow));
    m_painter.setFont(QFont(QStringLiteral("Helvetica"), 14));
}

void PathPainter::selectWaypointNumbers()
{
    m_painter.setPen(pathPen(Qt::darkMagenta, 1));
    m_painter.setFont(QFont(QStringLiteral("Helvetica"), 10));
}

QPointF PathPainter::onScreen(double x, double y)
{
    return {std::clamp(x, -FarOut, FarOut), std::clamp(y, -FarOut, FarOut)};
}
