#include "livedocks/timeline.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include <utility>

namespace {

constexpr int MarkHeight = 5;
constexpr int StripHeight = 2;

} // namespace

Timeline::Timeline(QWidget *parent) : QSlider(Qt::Horizontal, parent)
{
    setObjectName(QStringLiteral("timelineSlider"));
    setAccessibleName(tr("Frame"));
    setToolTip(tr("The frame that is shown."));
    setWhatsThis(
        tr("The frame that is shown, of all frames of the flight. Drag it, or use "
           "the arrows. Under it, triangles mark the first and the last frame of "
           "a run, lines the control points of a curved flight, and a strip the "
           "frames whose files are there."));
}

void Timeline::setMarks(Marks marks)
{
    if (marks == m_marks)
        return;
    m_marks = std::move(marks);
    update();
}

QSize Timeline::sizeHint() const
{
    return QSlider::sizeHint() + QSize(0, MarkHeight + StripHeight);
}

QSize Timeline::minimumSizeHint() const
{
    return QSlider::minimumSizeHint() + QSize(0, MarkHeight + StripHeight);
}

double Timeline::placeOf(double frame) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option,
                                                 QStyle::SC_SliderGroove, this);
    const int handle =
        style()
            ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this)
            .width();
    const double span = maximum() > minimum() ? maximum() - minimum() : 1;
    const double part = (frame - minimum()) / span;
    const double shown = option.upsideDown ? 1 - part : part;
    return groove.left() + handle / 2.0 + shown * (groove.width() - handle);
}

void Timeline::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double bottom = height() - 0.5;
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Highlight));
    for (const int frame : m_marks.files)
        painter.drawRect(
            QRectF(placeOf(frame) - 1, bottom - StripHeight, 2, StripHeight));
    const QColor ink = palette().color(QPalette::WindowText);
    painter.setPen(ink);
    for (const double frame : m_marks.points) {
        const double x = placeOf(frame);
        painter.drawLine(QPointF(x, bottom - MarkHeight - StripHeight),
                         QPointF(x, bottom - StripHeight));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const double top = bottom - StripHeight - MarkHeight;
    for (const auto &[frame, side] : {std::pair{m_marks.from, 1}, {m_marks.to, -1}}) {
        if (frame < minimum() || frame > maximum())
            continue;
        const double x = placeOf(frame);
        painter.drawPolygon(
            QPolygonF({QPointF(x, top), QPointF(x, top + MarkHeight),
                       QPointF(x + side * MarkHeight, top + MarkHeight)}));
    }
}
