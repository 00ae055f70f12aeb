#include "raster/textureimage.h"

#include "raster/imagefile.h"

#include <QSettings>

#include <cmath>

namespace {

// Rows of QRgb values can be read by pointer; pixel values stay what they are.
QImage as32Bit(QImage image)
{
    switch (image.format()) {
    case QImage::Format_Invalid:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
        return image;
    default:
        return std::move(image).convertToFormat(QImage::Format_ARGB32);
    }
}

} // namespace

TextureImage::TextureImage() { SetWeight(); }

TextureImage::TextureImage(const QString &fileName, const char *format)
    : QImage(as32Bit(loadImageFile(fileName, format)))
{
    SetWeight();
}

TextureImage::TextureImage(const char *fileName, const char *format)
    : TextureImage(QString::fromLocal8Bit(fileName), format)
{
}

TextureImage::TextureImage(uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
    SetWeight();
}

TextureImage::TextureImage(const uchar *data, int width, int height, Format format)
    : QImage(data, width, height, format)
{
    SetWeight();
}

TextureImage::TextureImage(uchar *data, int width, int height, qsizetype bytesPerLine,
                           Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
    SetWeight();
}

TextureImage::TextureImage(const uchar *data, int width, int height,
                           qsizetype bytesPerLine, Format format)
    : QImage(data, width, height, bytesPerLine, format)
{
    SetWeight();
}

TextureImage::TextureImage(int width, int height, Format format)
    : QImage(width, height, format)
{
    SetWeight();
}

TextureImage::TextureImage(const QSize &size, Format format) : QImage(size, format)
{
    SetWeight();
}

TextureImage::TextureImage(const TextureImage &other) : QImage(other) { SetWeight(); }

void TextureImage::SetWeight()
{
    // Not the store of the settings dialog; nothing in the program writes it.
    const QSettings settings(QStringLiteral("Zephrant"), QString());
    const int stored =
        settings.value(QStringLiteral("Settings/Antialiasing"), 10).toInt();
    const double s = stored > 0 ? stored : 1.0;
    for (int i = 0; i < int(weightTable.size()); ++i)
        weightTable[i] = std::exp(-i / s);
}
