#pragma once

#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <random>

/// Lines and pictures by which the quick painting is held against the painter's own.
namespace strokes {

/// A picture of 200 by 150 places on a screen of that resolution.
inline QImage canvas(qreal scale, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(qRound(200 * scale), qRound(150 * scale), format);
    image.setDevicePixelRatio(scale);
    image.fill(QColor(100, 140, 90));
    return image;
}

/// A line whose corners lie on whole pixels within that reach of the picture's middle;
/// some corners are met twice.
inline QList<QPointF> randomLine(std::mt19937 &random, int corners, int reach)
{
    std::uniform_int_distribution<int> offset(-reach, reach);
    QList<QPointF> line;
    for (int i = 0; i < corners; ++i)
        if (i > 0 && i % 9 == 0)
            line.append(line.constLast());
        else
            line.append(QPointF(100 + offset(random), 75 + offset(random)));
    return line;
}

inline QPainterPath pathOf(const QList<QPointF> &line)
{
    QPainterPath path(line.constFirst());
    for (const QPointF &corner : line)
        path.lineTo(corner);
    return path;
}

inline QPen roundPen(const QColor &colour, int width)
{
    return QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace strokes
