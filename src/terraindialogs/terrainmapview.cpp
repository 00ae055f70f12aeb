#include "terraindialogs/terrainmapview.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr double GripWidth = 6.0; // logical pixels on both sides of an edge
constexpr double LeastDrag = 4.0; // a shorter one is a click

/// Bounds that hold at least one cell.
QRect within(const QRect &part, const QSize &cells)
{
    QRect cut = part.intersected(QRect(QPoint(), cells));
    if (!cut.isEmpty())
        return cut;
    const QPoint corner(std::clamp(part.x(), 0, cells.width() - 1),
                        std::clamp(part.y(), 0, cells.height() - 1));
    return {corner, QSize(1, 1)};
}

} // namespace

TerrainMapView::TerrainMapView(QWidget *parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize TerrainMapView::sizeHint() const { return {560, 460}; }

QSize TerrainMapView::minimumSizeHint() const { return {200, 160}; }

void TerrainMapView::setTerrain(const QSize &cells, double shape)
{
    m_cells = cells;
    m_shape = shape > 0.0 ? shape : 1.0;
    m_map = QImage();
    m_message.clear();
    m_part.reset();
    m_drags = false;
    update();
}

void TerrainMapView::setMap(const QImage &map)
{
    m_map = map;
    update();
}

void TerrainMapView::setMessage(const QString &message)
{
    m_message = message;
    update();
}

void TerrainMapView::setPart(const std::optional<QRect> &part)
{
    const QRect whole(QPoint(), m_cells);
    m_part.reset();
    if (part && !m_cells.isEmpty() && within(*part, m_cells) != whole)
        m_part = within(*part, m_cells);
    update();
}

void TerrainMapView::select(const std::optional<QRect> &part)
{
    const std::optional<QRect> before = m_part;
    setPart(part);
    if (m_part != before)
        emit partChanged(m_part);
}

QRectF TerrainMapView::place() const
{
    if (m_cells.isEmpty())
        return {};
    const double width = double(m_cells.width()) * m_shape;
    const double height = double(m_cells.height());
    const double scale =
        std::min((this->width() - 2.0) / width, (this->height() - 2.0) / height);
    const QSizeF size(std::max(width * scale, 1.0), std::max(height * scale, 1.0));
    return {QPointF((this->width() - size.width()) / 2.0,
                    (this->height() - size.height()) / 2.0),
            size};
}

QPointF TerrainMapView::cellAt(const QPointF &position) const
{
    const QRectF map = place();
    return {(position.x() - map.x()) / map.width() * m_cells.width(),
            (position.y() - map.y()) / map.height() * m_cells.height()};
}

QRectF TerrainMapView::placeOf(const QRect &cells) const
{
    const QRectF map = place();
    const double x = map.width() / m_cells.width();
    const double y = map.height() / m_cells.height();
    return {map.x() + cells.x() * x, map.y() + cells.y() * y, cells.width() * x,
            cells.height() * y};
}

TerrainMapView::Grip TerrainMapView::gripAt(const QPointF &position) const
{
    Grip grip;
    if (!m_part)
        return grip;
    const QRectF part = placeOf(*m_part);
    const double reach = GripWidth;
    if (!part.adjusted(-reach, -reach, reach, reach).contains(position))
        return grip;
    grip.left = std::abs(position.x() - part.left()) <= reach;
    grip.right = !grip.left && std::abs(position.x() - part.right()) <= reach;
    grip.top = std::abs(position.y() - part.top()) <= reach;
    grip.bottom = !grip.top && std::abs(position.y() - part.bottom()) <= reach;
    if (grip.isNone())
        grip = {true, true, true, true};
    return grip;
}

void TerrainMapView::showCursor(const Grip &grip)
{
    if (m_cells.isEmpty())
        return unsetCursor();
    if (grip.isInside())
        return setCursor(Qt::SizeAllCursor);
    const bool across = grip.left || grip.right;
    const bool along = grip.top || grip.bottom;
    if (across && along)
        return setCursor(grip.left == grip.top ? Qt::SizeFDiagCursor
                                               : Qt::SizeBDiagCursor);
    if (across)
        return setCursor(Qt::SizeHorCursor);
    setCursor(along ? Qt::SizeVerCursor : Qt::CrossCursor);
}

void TerrainMapView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_cells.isEmpty())
        return QWidget::mousePressEvent(event);
    m_drags = true;
    m_grip = gripAt(event->position());
    m_dragFrom = cellAt(event->position());
    m_partBefore = m_part.value_or(QRect(QPoint(), m_cells));
}

QRect TerrainMapView::dragged(const QPointF &cell) const
{
    const QPointF way = cell - m_dragFrom;
    const QPoint steps(int(std::lround(way.x())), int(std::lround(way.y())));
    if (m_grip.isInside()) {
        QRect moved = m_partBefore.translated(steps);
        moved.moveLeft(std::clamp(moved.left(), 0, m_cells.width() - moved.width()));
        moved.moveTop(std::clamp(moved.top(), 0, m_cells.height() - moved.height()));
        return moved;
    }
    if (m_grip.isNone()) {
        const QPoint from(int(std::floor(m_dragFrom.x())),
                          int(std::floor(m_dragFrom.y())));
        const QPoint to(int(std::floor(cell.x())), int(std::floor(cell.y())));
        return {QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
                QPoint(std::max(from.x(), to.x()), std::max(from.y(), to.y()))};
    }
    QRect part = m_partBefore;
    if (m_grip.left)
        part.setLeft(std::min(part.left() + steps.x(), part.right()));
    if (m_grip.right)
        part.setRight(std::max(part.right() + steps.x(), part.left()));
    if (m_grip.top)
        part.setTop(std::min(part.top() + steps.y(), part.bottom()));
    if (m_grip.bottom)
        part.setBottom(std::max(part.bottom() + steps.y(), part.top()));
    return part;
}

void TerrainMapView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF cell = cellAt(event->position());
    const bool isOver =
        !m_cells.isEmpty() && QRectF(QPointF(), QSizeF(m_cells)).contains(cell);
    emit pointed(isOver ? std::optional(cell) : std::nullopt);
    if (!m_drags)
        return showCursor(gripAt(event->position()));
    const QPointF way = (cell - m_dragFrom);
    const QRectF map = place();
    const double pixels = std::hypot(way.x() / m_cells.width() * map.width(),
                                     way.y() / m_cells.height() * map.height());
    if (pixels >= LeastDrag || !m_grip.isNone())
        select(within(dragged(cell), m_cells));
}

void TerrainMapView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_drags = false;
}

void TerrainMapView::mouseDoubleClickEvent(QMouseEvent *)
{
    m_drags = false;
    select({});
}

void TerrainMapView::leaveEvent(QEvent *) { emit pointed({}); }

void TerrainMapView::keyPressEvent(QKeyEvent *event)
{
    QPoint way;
    switch (event->key()) {
    case Qt::Key_Left:
        way = {-1, 0};
        break;
    case Qt::Key_Right:
        way = {1, 0};
        break;
    case Qt::Key_Up:
        way = {0, -1};
        break;
    case Qt::Key_Down:
        way = {0, 1};
        break;
    case Qt::Key_Delete:
        return select({});
    default:
        return QWidget::keyPressEvent(event);
    }
    if (m_cells.isEmpty())
        return;
    // A hundredth of the terrain, with Ctrl a single cell.
    const bool fine = event->modifiers() & Qt::ControlModifier;
    way.rx() *= fine ? 1 : std::max(m_cells.width() / 100, 1);
    way.ry() *= fine ? 1 : std::max(m_cells.height() / 100, 1);
    QRect part = m_part.value_or(QRect(QPoint(), m_cells));
    if (event->modifiers() & Qt::ShiftModifier) {
        part.setWidth(std::max(part.width() + way.x(), 1));
        part.setHeight(std::max(part.height() + way.y(), 1));
    } else {
        part.moveLeft(
            std::clamp(part.left() + way.x(), 0, m_cells.width() - part.width()));
        part.moveTop(
            std::clamp(part.top() + way.y(), 0, m_cells.height() - part.height()));
    }
    select(part);
}

void TerrainMapView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (!m_map.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place(), m_map);
        if (m_part)
            paintPart(painter);
    }
    if (!m_message.isEmpty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(rect()).adjusted(24, 24, -24, -24),
                         Qt::AlignCenter | Qt::TextWordWrap, m_message);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

void TerrainMapView::paintPart(QPainter &painter) const
{
    const QRectF part = placeOf(*m_part);
    QPainterPath around;
    around.addRect(place());
    around.addRect(part);
    painter.fillPath(around, QColor(0, 0, 0, 110));
    painter.setPen(QPen(Qt::black, 3.0));
    painter.drawRect(part);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawRect(part);
}
