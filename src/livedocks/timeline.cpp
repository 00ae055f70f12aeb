#include "livedocks/timeline.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>
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

Timeline::Scale Timeline::scale() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto part = [&](QStyle::SubControl control) {
        return style()->subControlRect(QStyle::CC_Slider, &option, control, this);
    };
    const QRect groove = part(QStyle::SC_SliderGroove);
    const int handle = part(QStyle::SC_SliderHandle).width();
    const double span = maximum() > minimum() ? maximum() - minimum() : 1;
    const double step = (groove.width() - handle) / span;
    const double left = groove.left() + handle / 2.0;
    const double right = left + groove.width() - handle;
    const Scale from = option.upsideDown ? Scale{right, -step} : Scale{left, step};
    return {from.origin - minimum() * from.step, from.step};
}

// Frames that follow each other are one strip: there may be thousands.
void Timeline::paintFiles(QPainter &painter, const Scale &scale, double bottom) const
{
    const std::vector<int> &files = m_marks.files;
    for (std::size_t first = 0; first < files.size();) {
        std::size_t last = first;
        while (last + 1 < files.size() && files[last + 1] == files[last] + 1)
            ++last;
        const double one = scale.at(files[first]), other = scale.at(files[last]);
        const double left = std::min(one, other), right = std::max(one, other);
        painter.drawRect(
            QRectF(left - 1, bottom - StripHeight, right - left + 2, StripHeight));
        first = last + 1;
    }
}

void Timeline::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double bottom = height() - 0.5;
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Highlight));
    const Scale places = scale();
    paintFiles(painter, places, bottom);
    const QColor ink = palette().color(QPalette::WindowText);
    painter.setPen(ink);
    for (const double frame : m_marks.points) {
        const double x = places.at(frame);
        painter.drawLine(QPointF(x, bottom - MarkHeight - StripHeight),
                         QPointF(x, bottom - StripHeight));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const double top = bottom - StripHeight - MarkHeight;
    for (const auto &[frame, side] : {std::pair{m_marks.from, 1}, {m_marks.to, -1}}) {
        if (frame < minimum() || frame > maximum())
            continue;
        const double x = places.at(frame);
        painter.drawPolygon(
            QPolygonF({QPointF(x, top), QPointF(x, top + MarkHeight),
                       QPointF(x + side * MarkHeight, top + MarkHeight)}));
    }
}
