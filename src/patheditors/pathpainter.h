#pragma once

#include <QList>
#include <QPainter>
#include <QPixmap>
#include <QPoint>
#include <QRectF>
#include <QString>

#include <map>
#include <tuple>

class QPainterPath;

/// Where the line of a handle begins, from the middle of its waypoint.
constexpr double HandleStart = 6.0;

/// The small pictures of the editors, scaled once for each size and resolution.
class PathIcons {
public:
    [[nodiscard]] const QPixmap &icon(const QString &name, int side, qreal resolution);

private:
    std::map<std::tuple<QString, int, qreal>, QPixmap> m_icons;
};

/// Draws the parts of a path that both editors show.
///
/// Positions may lie anywhere: what cannot be seen is passed over, and lines that
/// lead far out are cut to coordinates that the painter bears.
class PathPainter {
public:
    PathPainter(QPainter &painter, PathIcons &icons, const QRectF &visible);

    /// A picture scaled to side by side pixels with its top left corner there.
    void drawIcon(const QString &name, int side, qint64 left, qint64 top);
    /// A number in the middle of 40 by 40 pixels with the top left corner there.
    void drawNumber(qsizetype number, qint64 left, qint64 top);
    void drawControlPointIcon(qint64 left, qint64 top);
    void drawWaypointIcon(qint64 left, qint64 top);
    /// White below, the colour on top.
    void strokeTwice(const QPainterPath &path, Qt::GlobalColor colour);
    void stroke(const QPainterPath &path, Qt::GlobalColor colour, int width);
    /// The same for one long line, of which little may be in sight.
    void strokeTwice(const QList<QPointF> &line, Qt::GlobalColor colour);
    void stroke(const QList<QPointF> &line, Qt::GlobalColor colour, int width);
    /// The lines of the waypoints' handles, each ending in a small picture.
    void drawHandles(const QPainterPath &lines, Qt::GlobalColor colour,
                     const QList<QPoint> &ends, const QString &icon);

    /// Pen and font for the numbers of control points.
    void selectControlPointNumbers();
    /// Pen and font for the numbers of waypoints.
    void selectWaypointNumbers();

    /// A position of the screen that the painter bears.
    [[nodiscard]] static QPointF onScreen(double x, double y);

private:
    [[nodiscard]] bool isFine(int width) const;
    [[nodiscard]] QPainterPath inSight(const QList<QPointF> &line) const;

    QPainter &m_painter;
    PathIcons &m_icons;
    QRectF m_visible;
};
