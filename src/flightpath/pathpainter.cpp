#include "flightpath/pathpainter.h"

#include <QPainterPath>
#include <QPen>

#include <algorithm>

namespace {

constexpr int ControlPointSide = 23;
constexpr int WaypointSide = 13;
constexpr int NumberSide = 40;
// Beyond this the rasterizer would lose its fractions.
constexpr double FarOut = 1 << 20;

QPen pathPen(Qt::GlobalColor colour, int width)
{
    return QPen(QColor(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
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

void PathPainter::stroke(const QPainterPath &path, Qt::GlobalColor colour, int width)
{
    m_painter.strokePath(path, pathPen(colour, width));
}

void PathPainter::strokeTwice(const QPainterPath &path, Qt::GlobalColor colour)
{
    stroke(path, Qt::white, 3);
    stroke(path, colour, 1);
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
