#include "raster/image.h"

#include "raster/bilinear.h"
#include "raster/imagefile.h"
#include "raster/pixelreader.h"

#include <algorithm>
#include <cmath>

Image::Image(const QString &fileName, const char *format)
    : QImage(loadImageFile(fileName, format))
{
}

Image::Image(const char *fileName, const char *format)
    : Image(QString::fromLocal8Bit(fileName), format)
{
}

Image::Image(uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
}

Image::Image(const uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
}

Image::Image(uchar *data, int width, int height, qsizetype bytesPerLine, Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
}

Image::Image(const uchar *data, int width, int height, qsizetype bytesPerLine,
             Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
}

Image::Image(int width, int height, Format format) : QImage(width, height, format) {}

Image::Image(const QSize &size, Format format) : QImage(size, format) {}

QRgb Image::pixel(double x, double y)
{
    if (isNull())
        return 0xFF000000u;
    // Not std::clamp: a picture of one column has an upper limit of -1, and a
    // position that is not a number must end inside too.
    const auto held = [](double v, int count) {
        return v > 0.0 ? std::min(v, std::max(count - 2.0, 0.0)) : 0.0;
    };
    x = held(x, width());
    y = held(y, height());
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    const int right = std::min(ix + 1, width() - 1);
    const int below = std::min(iy + 1, height() - 1);
    const double fx = x - std::floor(x);
    const double fy = y - std::floor(y);

    const PixelReader read(*this);
    const QRgb p00 = read(ix, iy);
    const QRgb p10 = read(right, iy);
    const QRgb p01 = read(ix, below);
    const QRgb p11 = read(right, below);
    return bilinearColour(p00, p10, p01, p11, fx, fy);
}
