#include "livedocks/mapview.h"

#include "base/pi.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace {

constexpr int LineLength = 44; // of the camera, in pixels
constexpr int Reach = 10;      // of the mouse
constexpr double DotRadius = 5.0;
constexpr double KeyStep = 1.0; // world units, degrees
constexpr double FastKeyStep = 10.0;
constexpr QColor Ink(20, 20, 20);
constexpr QColor Path(255, 230, 80);
constexpr QColor Camera(255, 90, 40);

bool isNear(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) <= Reach;
}

} // namespace

MapView::MapView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("mapView"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(tr("Map"));
    setToolTip(tr("Drag the camera, or the end of its line."));
    setWhatsThis(tr(
        "The terrain from above, north up: the way of the flight with its first and "
        "last frame and its control points, the camera, and the ground that its picture "
        "shows. Drag the camera to another place, or the end of its line to turn it. "
        "With the focus here the arrows move it by 1, with Shift by 10; with Ctrl, left "
        "and right turn it. The scenery stays as it is."));
}

void MapView::setContent(const Content &content)
{
    m_content = content;
    update();
}

void MapView::setGround(const QImage &ground)
{
    m_ground = ground;
    update();
}

QRectF MapView::place() const
{
    if (m_content.world.isEmpty())
        return {};
    const QSizeF fitted = m_content.world.scaled(QSizeF(size()), Qt::KeepAspectRatio);
    return {QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2),
            fitted};
}

QPointF MapView::toWidget(const QPointF &world) const
{
    const QRectF at = place();
    return {at.left() + world.x() / m_content.world.width() * at.width(),
            at.bottom() - world.y() / m_content.world.height() * at.height()};
}

QPointF MapView::toWorld(const QPointF &pixel) const
{
    const QRectF at = place();
    return {(pixel.x() - at.left()) / at.width() * m_content.world.width(),
            (at.bottom() - pixel.y()) / at.height() * m_content.world.height()};
}

QPoint MapView::cameraAt() const
{
    if (m_content.world.isEmpty())
        return {-1, -1};
    return toWidget({m_content.camera.x, m_content.camera.y}).toPoint();
}

QPoint MapView::directionAt() const
{
    const double heading = m_content.camera.heading / 180 * Pi;
    return cameraAt() +
           QPointF(std::sin(heading) * LineLength, -std::cos(heading) * LineLength)
               .toPoint();
}

QPointF MapView::ahead(double degrees, double distance) const
{
    const double heading = (m_content.camera.heading + degrees) / 180 * Pi;
    return toWidget({m_content.camera.x + std::sin(heading) * distance,
                     m_content.camera.y + std::cos(heading) * distance});
}

// --- Painting ------------------------------------------------------------------------

void MapView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark).darker(150));
    const QRectF at = place();
    if (at.isEmpty())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_ground.isNull())
        painter.fillRect(at, Qt::lightGray);
    else
        painter.drawImage(at, m_ground);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPath(painter);
    paintCamera(painter);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void MapView::paintPath(QPainter &painter) const
{
    QPolygonF path;
    for (const QPointF &point : m_content.path)
        path.append(toWidget(point));
    for (const auto &[colour, width] : {std::pair{Ink, 4.0}, {Path, 2.0}}) {
        painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(path);
    }
    painter.setPen(QPen(Ink, 1));
    painter.setBrush(Path);
    for (const QPointF &point : m_content.points)
        painter.drawEllipse(toWidget(point), 3, 3);
    if (path.isEmpty())
        return;
    // The first frame is a ring, the last one a square.
    painter.setBrush(Qt::white);
    painter.drawEllipse(path.first(), DotRadius, DotRadius);
    painter.drawRect(QRectF(path.last() - QPointF(4, 4), QSizeF(8, 8)));
}

void MapView::paintCamera(QPainter &painter) const
{
    if (m_content.farthest > m_content.nearest) {
        const double half = m_content.halfAngle;
        const double along = 1 / std::max(std::cos(half / 180 * Pi), 0.05);
        QColor fill = Camera;
        fill.setAlpha(70);
        painter.setPen(QPen(Camera, 1));
        painter.setBrush(fill);
        painter.save();
        painter.setClipRect(place());
        painter.drawPolygon(QPolygonF({ahead(-half, m_content.nearest * along),
                                       ahead(-half, m_content.farthest * along),
                                       ahead(half, m_content.farthest * along),
                                       ahead(half, m_content.nearest * along)}));
        painter.restore();
    }
    painter.setPen(QPen(Ink, 3));
    painter.drawLine(cameraAt(), directionAt());
    painter.setPen(QPen(Camera, 2));
    painter.drawLine(cameraAt(), directionAt());
    painter.setPen(QPen(Ink, 1));
    painter.setBrush(Camera);
    painter.drawEllipse(QPointF(cameraAt()), DotRadius, DotRadius);
    painter.drawEllipse(QPointF(directionAt()), 3.5, 3.5);
}

// --- Mouse and keys ------------------------------------------------------------------

void MapView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_content.world.isEmpty())
        return QWidget::mousePressEvent(event);
    m_held = isNear(event->position(), directionAt()) ? Held::Direction
             : isNear(event->position(), cameraAt())  ? Held::Camera
                                                      : Held::Nothing;
}

void MapView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_held != Held::Nothing)
        drag(event->position(), true);
}

void MapView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_held == Held::Nothing || event->button() != Qt::LeftButton)
        return QWidget::mouseReleaseEvent(event);
    drag(event->position(), false);
    m_held = Held::Nothing;
}

void MapView::drag(const QPointF &pixel, bool moving)
{
    ViewCamera camera = m_content.camera;
    if (m_held == Held::Camera) {
        const QPointF world = toWorld(pixel);
        camera.x = world.x();
        camera.y = world.y();
    } else {
        const QPointF way = pixel - QPointF(cameraAt());
        if (way.isNull())
            return;
        const double heading = std::atan2(way.x(), -way.y()) * 180 / Pi;
        camera.heading = heading < 0 ? heading + 360 : heading;
    }
    m_content.camera = camera;
    update();
    emit cameraDragged(camera, moving);
}

void MapView::keyPressEvent(QKeyEvent *event)
{
    const double step = event->modifiers() & Qt::ShiftModifier ? FastKeyStep : KeyStep;
    const bool turn = event->modifiers() & Qt::ControlModifier;
    ViewCamera camera = m_content.camera;
    switch (event->key()) {
    case Qt::Key_Left:
        (turn ? camera.heading : camera.x) -= step;
        break;
    case Qt::Key_Right:
        (turn ? camera.heading : camera.x) += step;
        break;
    case Qt::Key_Up:
        camera.y += step;
        break;
    case Qt::Key_Down:
        camera.y -= step;
        break;
    default:
        return QWidget::keyPressEvent(event);
    }
    if (m_content.world.isEmpty())
        return;
    m_content.camera = camera;
    update();
    emit cameraDragged(camera, false);
}
