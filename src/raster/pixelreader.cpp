#include "raster/pixelreader.h"

PixelReader::PixelReader(const QImage &image)
    : m_image(&image), m_bits(image.constBits()), m_bytesPerLine(image.bytesPerLine())
{
    switch (image.format()) {
    case QImage::Format_RGB32:
        m_layout = Layout::Rgb32;
        break;
    case QImage::Format_ARGB32:
        m_layout = Layout::Argb32;
        break;
    case QImage::Format_RGB888:
        m_layout = Layout::Rgb888;
        break;
    case QImage::Format_Grayscale8:
        m_layout = Layout::Grayscale8;
        break;
    default:
        m_layout = Layout::Other;
    }
}

void PixelReader::readRow(int y, QRgb *out) const
{
    const int width = m_image->width();
    for (int x = 0; x < width; ++x)
        out[x] = (*this)(x, y);
}
