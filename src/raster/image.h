#pragma once

#include <QImage>

/// A colour picture with a bilinear sampler.
class Image : public QImage {
public:
    Image() = default;
    /// Loads a file; the image is null if that fails.
    explicit Image(const QString &fileName, const char *format = nullptr);
    explicit Image(const char *fileName, const char *format = nullptr);
    Image(uchar *data, int width, int height, Format format);
    Image(const uchar *data, int width, int height, Format format);
    Image(uchar *data, int width, int height, qsizetype bytesPerLine, Format format);
    Image(const uchar *data, int width, int height, qsizetype bytesPerLine,
          Format format);
    Image(int width, int height, Format format);
    Image(const QSize &size, Format format);

    using QImage::pixel;
    /// Bilinear read at pixel coordinates, y downward, without a flip. The
    /// position is held within the picture less its last column and row; where
    /// the picture has no two columns or rows, the nearest pixel that exists
    /// answers. Alpha of the result is 0xFF; a null image gives opaque black.
    [[nodiscard]] QRgb pixel(double x, double y);
};
