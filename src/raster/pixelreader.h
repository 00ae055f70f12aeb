#pragma once

#include <QImage>

#include <cstring>

/// Reads pixels of one image and gives what QImage::pixel gives, without its
/// cost: rows are addressed by pointer.
///
/// Borrows the image, which must outlive the reader and keep its buffer (no
/// detach, no assignment) meanwhile. Positions must lie inside the image.
class PixelReader {
public:
    explicit PixelReader(const QImage &image);

    /// Pixel at column x and row y, y counted downward.
    [[nodiscard]] QRgb operator()(int x, int y) const
    {
        const uchar *row = m_bits + y * m_bytesPerLine;
        switch (m_layout) {
        case Layout::Rgb32:
            return 0xFF000000u | reinterpret_cast<const QRgb *>(row)[x];
        case Layout::Argb32:
            return reinterpret_cast<const QRgb *>(row)[x];
        case Layout::Rgb888:
            row += qsizetype(x) * 3;
            return qRgb(row[0], row[1], row[2]);
        case Layout::Grayscale8:
            return qRgb(row[x], row[x], row[x]);
        case Layout::Other:
            break;
        }
        return m_image->pixel(x, y);
    }

    /// Four pixels of row y, from column x on.
    void readFour(int x, int y, QRgb *out) const
    {
        if (m_layout == Layout::Argb32 || m_layout == Layout::Rgb32) {
            std::memcpy(out, m_bits + y * m_bytesPerLine + qsizetype(x) * 4,
                        4 * sizeof(QRgb));
            if (m_layout == Layout::Rgb32)
                for (int k = 0; k < 4; ++k)
                    out[k] |= 0xFF000000u;
            return;
        }
        for (int k = 0; k < 4; ++k)
            out[k] = (*this)(x + k, y);
    }

    /// All pixels of row y, into a buffer of the image's width.
    void readRow(int y, QRgb *out) const;

private:
    enum class Layout { Rgb32, Argb32, Rgb888, Grayscale8, Other };

    const QImage *m_image;
    const uchar *m_bits;
    qsizetype m_bytesPerLine;
    Layout m_layout;
};
