#include "tools/merge.h"

#include "base/truncate.h"
#include "raster/bilinearrows.h"
#include "raster/imagerows.h"

#include <QObject>

#include <vector>

namespace {

// The merged byte of any two bytes: [first * 256 + second].
using MergeTable = std::vector<uchar>;

MergeTable tableOf(const MergeOptions &options)
{
    MergeTable table;
    table.reserve(65536); // 256 by 256 bytes
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const double merged = options.mode == MergeOptions::Mode::Add
                                      ? b * options.bias2 + a * options.bias1
                                      : (b + options.bias2) * (a + options.bias1) / 255.0;
            table.push_back(static_cast<uchar>(lowBitsOfTruncated<8>(merged)));
        }
    }
    return table;
}

} // namespace

Result<QImage> merge(const QImage &first, const QImage &second,
                     const MergeOptions &options, Progress &progress)
{
    const QImage source1 = as32Bit(first);
    const QImage source2 = as32Bit(second);
    const int width = first.width();
    const int height = first.height();
    QImage merged(width, height, QImage::Format_RGB888);
    if (merged.isNull() || source1.isNull() || source2.isNull())
        return failed(QObject::tr("There is not enough memory for the picture."));

    const MergeTable table = tableOf(options);
    BilinearRows stretched(source2, width, height);
    for (int y = 0; y < height; ++y) {
        if (!progress.step(y, height))
            return stopped();
        const QRgb *const row1 = rowOf(source1, y);
        const QRgb *const row2 = stretched.row(y);
        uchar *out = merged.scanLine(y);
        for (int x = 0; x < width; ++x, out += 3) {
            const QRgb a = row1[x];
            const QRgb b = row2[x];
            out[0] = table[qRed(a) * 256 + qRed(b)];
            out[1] = table[qGreen(a) * 256 + qGreen(b)];
            out[2] = table[qBlue(a) * 256 + qBlue(b)];
        }
    }
    return merged;
}
