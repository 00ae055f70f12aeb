#include "template/templatetool.h"

#include <QCoreApplication>

#include <algorithm>

Result<ElevationImage> turnUpsideDown(const ElevationImage &image, Progress &progress)
{
    ElevationImage turned(image.size(), QImage::Format_RGB32);
    if (turned.isNull())
        return failed(QCoreApplication::translate(
            "TemplateToolDialog", "There is no memory for the turned terrain."));
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    for (int row = 0; row < turned.height(); ++row) {
        if (!progress.step(row, turned.height()))
            return stopped();
        const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(row));
        auto *to = reinterpret_cast<QRgb *>(turned.scanLine(row));
        std::transform(from, from + turned.width(), to, [](QRgb pixel) {
            // There is one step more below 0 than above.
            const int steps =
                std::min(-ElevationImage::stepsOf(pixel), ElevationImage::HighestStep);
            return 0xff000000u | (static_cast<QRgb>(steps) & 0x00ffffffu);
        });
    }
    return turned;
}
