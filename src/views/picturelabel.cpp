#include "views/picturelabel.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>

PictureLabel::PictureLabel(QWidget *parent) : QLabel(parent) { setScaledContents(true); }

void PictureLabel::paintEvent(QPaintEvent *event)
{
    const QPixmap picture = pixmap();
    const QRect area = contentsRect();
    const qint64 pixels = qint64(area.width()) * area.height();
    if (picture.isNull() || pixels <= LargestCopy || picture.size() == area.size()) {
        QLabel::paintEvent(event);
        return;
    }
    // Whole picture pixels around the part to be drawn, so that neighbouring parts
    // join without a seam.
    const double columnWidth = double(area.width()) / picture.width();
    const double rowHeight = double(area.height()) / picture.height();
    const QRect part = event->rect().intersected(area);
    const double left = std::floor(part.left() / columnWidth);
    const double top = std::floor(part.top() / rowHeight);
    const double right = std::ceil((part.right() + 1) / columnWidth);
    const double bottom = std::ceil((part.bottom() + 1) / rowHeight);
    const QRectF source(left, top, right - left, bottom - top);
    const QRectF target(left * columnWidth, top * rowHeight, source.width() * columnWidth,
                        source.height() * rowHeight);
    QPainter painter(this);
    painter.drawPixmap(target, picture, source);
}
