#include "raster/imagerows.h"

#include <utility>

namespace {

bool is32Bit(const QImage &image)
{
    return image.format() == QImage::Format_RGB32 ||
           image.format() == QImage::Format_ARGB32;
}

} // namespace

void makeEditable(QImage &image)
{
    if (image.isNull() || is32Bit(image) || image.format() == QImage::Format_RGB888)
        return;
    // By move: the toolkit then converts within the old buffer where it can.
    const QImage::Format format =
        image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    image = std::move(image).convertToFormat(format);
}

QImage as32Bit(QImage image)
{
    if (image.format() == QImage::Format_RGB888)
        return std::move(image).convertToFormat(QImage::Format_RGB32);
    makeEditable(image);
    return image;
}

void storeRgb888(const QRgb *colours, int width, uchar *row)
{
    for (qsizetype x = 0; x < width; ++x) {
        row[x * 3] = static_cast<uchar>(qRed(colours[x]));
        row[x * 3 + 1] = static_cast<uchar>(qGreen(colours[x]));
        row[x * 3 + 2] = static_cast<uchar>(qBlue(colours[x]));
    }
}
