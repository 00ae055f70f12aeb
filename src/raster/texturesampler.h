#pragma once

#include "raster/pixelreader.h"
#include "raster/smoothread.h"
#include "raster/textureimage.h"

#include <array>

/// Reads a texture where a ray lands: the inner loop of every picture.
///
/// Gives what TextureImage::GetColorInt, GetColorArray and GetColor give, from rows
/// by pointer. Borrows the picture, which must outlive the sampler and not change
/// meanwhile. Holds no state between reads, so threads may share one.
class TextureSampler {
public:
    explicit TextureSampler(const TextureImage &texture)
        : m_read(texture), m_weights(texture.weights().data()), m_width(texture.width()),
          m_height(texture.height()), m_background(texture.background())
    {
    }

    /// Nearest texel.
    [[nodiscard]] QRgb nearest(const C4Vector &p) const
    {
        // Also true for what lies between -1 and 0: it truncates to 0.
        if (!(p.x > -1.0 && p.x < m_width && p.y > -1.0 && p.y < m_height))
            return m_background;
        return m_read(static_cast<int>(p.x), m_height - 1 - static_cast<int>(p.y));
    }

    /// Average of the nearest texels of five points.
    [[nodiscard]] QRgb average(const C4Vector *p) const
    {
        unsigned int red = 0;
        unsigned int green = 0;
        unsigned int blue = 0;
        for (int i = 0; i < 5; ++i) {
            const QRgb texel = nearest(p[i]);
            red += qRed(texel);
            green += qGreen(texel);
            blue += qBlue(texel);
        }
        return 0xFF000000u | (red / 5) << 16 | (green / 5) << 8 | blue / 5;
    }

    /// Smooth 4-by-4 read with exponential weights.
    [[nodiscard]] QRgb smooth(const C4Vector &p) const
    {
        const double gx = p.x - 1.0;
        const double gy = m_height - p.y;
        if (!(gx >= 0.0 && gx < m_width - 3 && gy >= 0.0 && gy < m_height - 3))
            return m_background;
        const int ix = static_cast<int>(gx);
        const int iy = static_cast<int>(gy);
        std::array<QRgb, 16> block;
        for (int r = 0; r < 4; ++r)
            m_read.readFour(ix, iy + r, block.data() + r * 4);
        return smoothColour(block.data(), gx - ix, gy - iy, m_weights);
    }

    /// The colour at (fx, fy) between the inner texels of a 4-by-4 block.
    [[nodiscard]] static QRgb blend(const QRgb *block, double fx, double fy,
                                    const double *weights)
    {
        const std::array a = squaredTenths(fx);
        const std::array b = squaredTenths(fy);
        double total = 0.0;
        double red = 0.0;
        double green = 0.0;
        double blue = 0.0;
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                const double w = weights[static_cast<int>(a[c] + b[r])];
                const QRgb texel = block[r * 4 + c];
                total += w;
                red += w * qRed(texel);
                green += w * qGreen(texel);
                blue += w * qBlue(texel);
            }
        }
        total += 1e-08;
        return 0xFF000000u | byteOf(red / total) << 16 | byteOf(green / total) << 8 |
               byteOf(blue / total);
    }

private:
    // Squared distances in tenths from the sample to the four columns or rows.
    static std::array<double, 4> squaredTenths(double f)
    {
        return {(f + 1) * 10 * (f + 1), f * 10 * f, (1 - f) * 10 * (1 - f),
                ((1 - f) + 1) * 10 * ((1 - f) + 1)};
    }
    static unsigned int byteOf(double v)
    {
        return v <= 255.0 ? static_cast<unsigned int>(v) : 255u;
    }

    PixelReader m_read;
    const double *m_weights; // exp(-i / S), i from 0 to 80
    int m_width;
    int m_height;
    QRgb m_background;
};
