#include "tools/merge.h"

#include "base/truncate.h"
#include "raster/bilinearrows.h"
#include "raster/imagerows.h"

#include <QObject>

#include <vector>

namespace {

constexpr size_t Pairs = 65536; // of any two bytes

// The merged byte of any two bytes: [first * 256 + second].
struct MergeTable {
    std::vector<uchar> bytes;
    std::vector<uchar> isCut; // 1 where the byte is not the whole result
    bool hasCut = false;
};

MergeTable tableOf(const MergeOptions &options)
{
    MergeTable table;
    table.bytes.reserve(Pairs);
    table.isCut.reserve(Pairs);
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const double merged = options.mode == MergeOptions::Mode::Add
                                      ? b * options.bias2 + a * options.bias1
                                      : (b + options.bias2) * (a + options.bias1) / 255.0;
            // What is cut toward zero to a byte keeps all its bits.
            const bool isWhole = merged > -1.0 && merged < 256.0;
            table.bytes.push_back(static_cast<uchar>(lowBitsOfTruncated<8>(merged)));
            table.isCut.push_back(isWhole ? 0 : 1);
            table.hasCut |= !isWhole;
        }
    }
    return table;
}

void mergeRow(const QRgb *row1, const QRgb *row2, const std::vector<uchar> &table,
              uchar *out, int width)
{
    for (int x = 0; x < width; ++x, out += 3) {
        const QRgb a = row1[x];
        const QRgb b = row2[x];
        out[0] = table[qRed(a) * 256 + qRed(b)];
        out[1] = table[qGreen(a) * 256 + qGreen(b)];
        out[2] = table[qBlue(a) * 256 + qBlue(b)];
    }
}

qint64 cutInRow(const QRgb *row1, const QRgb *row2, const std::vector<uchar> &isCut,
                int width)
{
    qint64 count = 0;
    for (int x = 0; x < width; ++x) {
        const QRgb a = row1[x];
        const QRgb b = row2[x];
        count += isCut[qRed(a) * 256 + qRed(b)];
        count += isCut[qGreen(a) * 256 + qGreen(b)];
        count += isCut[qBlue(a) * 256 + qBlue(b)];
    }
    return count;
}

} // namespace

Result<QImage> merge(const QImage &first, const QImage &second,
                     const MergeOptions &options, Progress &progress, qint64 *cut)
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
    qint64 beyond = 0;
    for (int y = 0; y < height; ++y) {
        if (!progress.step(y, height))
            return stopped();
        const QRgb *const row1 = rowOf(source1, y);
        const QRgb *const row2 = stretched.row(y);
        mergeRow(row1, row2, table.bytes, merged.scanLine(y), width);
        if (table.hasCut) // seldom
            beyond += cutInRow(row1, row2, table.isCut, width);
    }
    if (cut != nullptr)
        *cut = beyond;
    return merged;
}
