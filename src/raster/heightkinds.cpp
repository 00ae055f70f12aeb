#include "raster/heightkinds.h"

#include "raster/elevationimage.h"
#include "raster/pixelreader.h"
#include "raster/tiffhead.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSet>

#include <algorithm>
#include <cstdlib>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("HeightKinds", source);
}

QString floatingPoint(int bits)
{
    return text("floating-point numbers of %1 bits").arg(bits);
}

QString wholeNumbers(int bits) { return text("numbers of %1 bits").arg(bits); }

QString kindOf(QImage::Format format)
{
    switch (format) {
    case QImage::Format_Grayscale16:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
        return wholeNumbers(16);
    case QImage::Format_RGBX16FPx4:
    case QImage::Format_RGBA16FPx4:
    case QImage::Format_RGBA16FPx4_Premultiplied:
        return floatingPoint(16);
    case QImage::Format_RGBX32FPx4:
    case QImage::Format_RGBA32FPx4:
    case QImage::Format_RGBA32FPx4_Premultiplied:
        return floatingPoint(32);
    default:
        return {};
    }
}

} // namespace

QString otherHeightsIn(const QString &fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    // The toolkit tells nothing of a TIFF that it cannot read.
    if (const auto tiff = readTiffHead(file)) {
        if (tiff->floating)
            return floatingPoint(tiff->bits);
        return tiff->bits > 8 ? wholeNumbers(tiff->bits) : QString();
    }
    file.seek(0);
    return kindOf(QImageReader(&file).imageFormat());
}

QString otherHeightsNotice(const QString &fileName)
{
    const QString kind = otherHeightsIn(fileName);
    if (kind.isEmpty())
        return {};
    return text("\"%1\" holds %2, not heights of 24 bits; Open Terrain reads it.")
        .arg(fileName, kind);
}

bool looksLikeElevations(const QImage &image)
{
    constexpr int Steps = 128;     // samples along each side
    constexpr int Near = 1 << 15;  // 328 m where a unit is a centimetre
    constexpr int FewColours = 12; // of a drawing
    if (image.width() < 2 || image.depth() < 24 || image.depth() > 32)
        return false;
    const PixelReader read(image);
    QSet<int> heights;
    int different = 0, far = 0;
    const int stepX = std::max(image.width() / Steps, 1);
    const int stepY = std::max(image.height() / Steps, 1);
    for (int y = 0; y < image.height(); y += stepY) {
        for (int x = 0; x + 1 < image.width(); x += stepX) {
            const QRgb pixel = read(x, y);
            if (qAlpha(pixel) != 255 && image.hasAlphaChannel())
                return false;
            const int height = ElevationImage::stepsOf(pixel);
            const int distance =
                std::abs(ElevationImage::stepsOf(read(x + 1, y)) - height);
            heights.insert(height);
            different += distance != 0 ? 1 : 0;
            far += distance > Near ? 1 : 0;
        }
    }
    return heights.size() >= FewColours && far * 33 <= different;
}
