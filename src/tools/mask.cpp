#include "tools/mask.h"

#include "raster/imagerows.h"

#include <QObject>

#include <algorithm>

namespace {

// base + trunc((m - base) * alpha / 255.0 + 0.5), in integers: the sum under the
// cut is never whole, so the same division cut toward zero gives the same.
int blend(int base, int m, int alpha)
{
    const int added = (2 * (m - base) * alpha + 255) / 510;
    return std::clamp(base + added, 0, 255);
}

QRgb blend(QRgb base, QRgb m)
{
    const int alpha = qAlpha(m);
    return qRgb(blend(qRed(base), qRed(m), alpha), blend(qGreen(base), qGreen(m), alpha),
                blend(qBlue(base), qBlue(m), alpha));
}

} // namespace

Result<QImage> applyMask(QImage image, const QImage &mask, Progress &progress)
{
    // Smooth scaling gives premultiplied colours, which rows undo one by one.
    const QImage scaled =
        mask.convertToFormat(QImage::Format_ARGB32)
            .scaled(image.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (image.isNull() || scaled.isNull() || scaled.depth() != 32)
        return failed(QObject::tr("There is not enough memory for the picture."));
    const bool premultiplied = scaled.format() == QImage::Format_ARGB32_Premultiplied;

    makeEditable(image);
    const int width = image.width();
    const int height = image.height();
    int y = 0;
    const auto blendRow = [&](QRgb *row) {
        if (!progress.step(y, height))
            return false;
        const QRgb *const over = rowOf(scaled, y++);
        for (int x = 0; x < width; ++x)
            row[x] = blend(row[x], premultiplied ? qUnpremultiply(over[x]) : over[x]);
        return true;
    };
    if (!editRows(image, blendRow))
        return stopped();
    return image;
}
