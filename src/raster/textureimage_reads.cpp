// Reads of single positions with established names. What draws reads by TextureSampler,
// on which these are built; only tests call them.
#include "raster/textureimage.h"

#include "raster/bilinear.h"
#include "raster/pixelreader.h"
#include "raster/texturesampler.h"

#include <cmath>

namespace {

unsigned int byteOf(double v) { return v <= 255.0 ? static_cast<unsigned int>(v) : 255u; }

unsigned int opaque(double red, double green, double blue)
{
    return 0xFF000000u | byteOf(red) << 16 | byteOf(green) << 8 | byteOf(blue);
}

} // namespace

void TextureImage::GetColorInt(const C4Vector &p, unsigned int *colour) const
{
    *colour = TextureSampler(*this).nearest(p);
}

void TextureImage::GetColor(int x, int y, unsigned int *colour) const
{
    const bool inside = x >= 0 && x < width() && y >= 0 && y < height();
    *colour = inside ? PixelReader(*this)(x, height() - 1 - y) : backgroundColor;
}

void TextureImage::GetColorArray(const C4Vector *p, unsigned int *colour) const
{
    *colour = TextureSampler(*this).average(p);
}

void TextureImage::readBlock(int column, int row)
{
    const PixelReader read(*this);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            cacheBlock[r * 4 + c] = read(column + c, row + r);
    cacheColumn = column;
    cacheRow = row;
}

void TextureImage::GetColor(const C4Vector &p, unsigned int *colour)
{
    const double gx = p.x - 1.0;
    const double gy = height() - p.y;
    if (!(gx >= 0.0 && gx < width() - 3 && gy >= 0.0 && gy < height() - 3)) {
        *colour = backgroundColor;
        return;
    }
    const int ix = static_cast<int>(gx);
    const int iy = static_cast<int>(gy);
    if (ix != cacheColumn || iy != cacheRow)
        readBlock(ix, iy);

    *colour = TextureSampler::blend(cacheBlock.data(), gx - std::floor(gx),
                                    gy - std::floor(gy), weightTable.data());
}

void TextureImage::GetColor(const C2Vector &p, unsigned int *colour) const
{
    const double x = p.x;
    double y = height() - p.y - 1.0;
    if (y >= -0.5 && y <= 0.0)
        y = 0.0;
    const int lastColumn = width() - 1;
    const int lastRow = height() - 1;
    if (!(x >= 0.0 && x <= lastColumn && y >= 0.0 && y <= lastRow)) {
        *colour = 0xFF000000u;
        return;
    }
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    const double fx = x - std::floor(x);
    const double fy = y - std::floor(y);
    const PixelReader read(*this);
    const QRgb p00 = read(ix, iy);
    // On the last row or column the weight of what lies beyond would be 1, since
    // weights are reversed: there the read runs along the one line alone.
    const bool alongX = ix < lastColumn;
    const bool alongY = iy < lastRow;
    const QRgb p10 = alongX ? read(ix + 1, iy) : p00;
    const QRgb p01 = alongY ? read(ix, iy + 1) : p00;
    const QRgb p11 = alongX ? (alongY ? read(ix + 1, iy + 1) : p10) : p01;
    // The weights are reversed, so that each corner stands for the opposite one.
    const auto mix = [fx, fy](int c00, int c10, int c01, int c11) {
        return bilinear(c11, c01, c10, c00, fx, fy);
    };
    *colour = opaque(mix(qRed(p00), qRed(p10), qRed(p01), qRed(p11)),
                     mix(qGreen(p00), qGreen(p10), qGreen(p01), qGreen(p11)),
                     mix(qBlue(p00), qBlue(p10), qBlue(p01), qBlue(p11)));
}
