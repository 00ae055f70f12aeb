#include "raster/elevationimage.h"

#include "base/truncate.h"
#include "base/vectors.h"
#include "raster/bilinear.h"
#include "raster/imagefile.h"
#include "raster/pixelreader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

// trunc(v + 0.5) as a pixel index, or -1 where that is none of 0 to count - 1.
int nearestIndex(double v, int count)
{
    const double index = std::trunc(v + 0.5);
    return index >= 0.0 && index < count ? static_cast<int>(index) : -1;
}

} // namespace

ElevationImage::ElevationImage(const QString &fileName, const char *format)
    : QImage(loadImageFile(fileName, format, PictureUse::AsStored))
{
}

ElevationImage::ElevationImage(const char *fileName, const char *format)
    : ElevationImage(QString::fromLocal8Bit(fileName), format)
{
}

ElevationImage::ElevationImage(const QString &fileName, double x, double y,
                               const char *format)
    : ElevationImage(fileName, format)
{
    setScales(x, y);
}

ElevationImage::ElevationImage(uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
}

ElevationImage::ElevationImage(const uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
}

ElevationImage::ElevationImage(uchar *data, int width, int height, qsizetype bytesPerLine,
                               Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
}

ElevationImage::ElevationImage(const uchar *data, int width, int height,
                               qsizetype bytesPerLine, Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
}

ElevationImage::ElevationImage(int width, int height, Format format)
    : QImage(width, height, format)
{
}

ElevationImage::ElevationImage(const QSize &size, Format format) : QImage(size, format) {}

double ElevationImage::elevation(int x, int y) const
{
    const int column = nearestIndex(x * m_xScale, width());
    // The flip comes after the rounding, so the bottom row is index 0 here.
    const int fromBottom = nearestIndex(y * m_yScale, height());
    if (column < 0 || fromBottom < 0)
        return 0.0;
    return stepsOf(PixelReader(*this)(column, height() - 1 - fromBottom)) * m_zScale;
}

double ElevationImage::elevation(double x, double y) const
{
    const double px = x * m_xScale;
    const double py = height() - y * m_yScale - 1.0;
    if (!(px >= 0.0 && px < width() - 1 && py >= 0.0 && py < height() - 1))
        return 0.0;
    const int ix = static_cast<int>(px);
    const int iy = static_cast<int>(py);
    const double fx = px - std::floor(px);
    const double fy = py - std::floor(py);

    const PixelReader read(*this);
    const double e00 = stepsOf(read(ix, iy));
    const double e10 = stepsOf(read(ix + 1, iy));
    const double e01 = stepsOf(read(ix, iy + 1));
    const double e11 = stepsOf(read(ix + 1, iy + 1));
    return bilinear(e00, e10, e01, e11, fx, fy) * m_zScale;
}

QRgb ElevationImage::pixelOf(double e, double zScale)
{
    return 0xFF000000u | lowBitsOfTruncated<24>(halfAwayFromZero(e / zScale));
}

void ElevationImage::setElevation(int x, int y, double e)
{
    const int column = nearestIndex(x * m_xScale, width());
    const int row = nearestIndex(y * m_yScale, height());
    if (column < 0 || row < 0)
        return;
    const QRgb value = pixelOf(e, m_zScale);
    if (format() == Format_RGB888) {
        uchar *const p = scanLine(row) + qsizetype(column) * 3;
        p[0] = static_cast<uchar>(qRed(value));
        p[1] = static_cast<uchar>(qGreen(value));
        p[2] = static_cast<uchar>(qBlue(value));
        return;
    }
    setPixel(column, row, value);
}

std::pair<double, double> ElevationImage::elevationRange() const
{
    double lowest = std::numeric_limits<float>::max();
    double highest = std::numeric_limits<float>::lowest();
    const auto include = [&](double e) {
        lowest = std::min(lowest, e);
        highest = std::max(highest, e);
    };
    // A scale above 1 leads out of the image, where the elevation is 0; one below 1
    // leads to some columns several times.
    const auto indices = [](double scale, int count) {
        std::vector<int> found;
        for (int i = 0; i < count; ++i)
            if (const int index = nearestIndex(i * scale, count);
                found.empty() || found.back() != index)
                found.push_back(index);
        return found;
    };
    const std::vector<int> columns = indices(m_xScale, width());
    const PixelReader read(*this);
    for (const int fromBottom : indices(m_yScale, height()))
        for (const int column : columns)
            include(column < 0 || fromBottom < 0
                        ? 0.0
                        : stepsOf(read(column, height() - 1 - fromBottom)) * m_zScale);
    return {lowest, highest};
}

std::pair<int, int> ElevationImage::stepsRange() const
{
    if (isNull())
        return {0, 0};
    int lowest = HighestStep;
    int highest = LowestStep;
    const PixelReader read(*this);
    std::vector<QRgb> row(static_cast<std::size_t>(width()));
    for (int y = 0; y < height(); ++y) {
        read.readRow(y, row.data());
        for (const QRgb pixel : row) {
            const int steps = stepsOf(pixel);
            lowest = std::min(lowest, steps);
            highest = std::max(highest, steps);
        }
    }
    return {lowest, highest};
}

void ElevationImage::Z(C4Vector &p) const { p.z = elevation(p.x, p.y); }

void ElevationImage::clear(const unsigned int &value)
{
    if (isNull())
        return;
    if (format() == Format_RGB888 || format() == Format_RGB32 ||
        format() == Format_ARGB32) {
        fill(value);
        return;
    }
    for (int y = 0; y < height(); ++y)
        for (int x = 0; x < width(); ++x)
            setPixel(x, y, value);
}
