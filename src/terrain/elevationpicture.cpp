#include "terrain/elevationpicture.h"

#include "base/memorybudget.h"
#include "base/workerpool.h"
#include "raster/elevationimage.h"
#include "raster/imagerows.h"
#include "terrain/rowwork.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

constexpr int RowsOfPiece = 16;
constexpr double SmallestUnit = 0.01; // metres
constexpr double LargestUnit = 1e9;
constexpr double LeastZScale = 0.00005;
constexpr double Decimals = 1e6; // of the z scale in the form

tl::unexpected<Failure> tooLarge()
{
    return failed(QCoreApplication::translate(
        "Terrain", "There is not enough memory for so many heights."));
}

// How many of a row had to be cut.
qint64 storeRow(const float *metres, int width, double unit, QRgb *pixels)
{
    constexpr double Lowest = ElevationImage::LowestStep;
    constexpr double Highest = ElevationImage::HighestStep;
    qint64 cut = 0;
    for (int x = 0; x < width; ++x) {
        const double steps = double(metres[x]) / unit;
        const double nearest = steps < 0.0 ? steps - 0.5 : steps + 0.5;
        // Numbers below the limit by less than one are cut to it, which is no loss.
        const bool fits = nearest > Lowest - 1.0 && nearest < Highest + 1.0;
        cut += fits ? 0 : 1;
        const double kept = std::clamp(nearest, Lowest, Highest);
        pixels[x] =
            0xFF000000u | (static_cast<quint32>(static_cast<qint32>(kept)) & 0xFFFFFFu);
    }
    return cut;
}

} // namespace

Result<ElevationPicture> elevationPicture(const Heights &heights, double unit,
                                          WorkerPool &pool, const Stretch &stretch)
{
    ElevationPicture picture;
    const int width = heights.size.width();
    if (fitsMemory(qint64(heights.metres.size()) * 4))
        picture.image = QImage(heights.size, QImage::Format_RGB32);
    if (picture.image.isNull())
        return tooLarge();
    uchar *const bits = picture.image.bits();
    const qsizetype perLine = picture.image.bytesPerLine();
    std::atomic<qint64> cut{0};
    const bool stored = workOnPieces(
        pool, heights.size.height(), RowsOfPiece, stretch, [&](int first, int last) {
            for (int y = first; y < last; ++y)
                cut += storeRow(heights.row(y), width, unit,
                                reinterpret_cast<QRgb *>(bits + y * perLine));
        });
    if (!stored)
        return stopped();
    picture.cut = cut;
    return picture;
}

Result<Heights> heightsOfPicture(const QImage &image, double unit, WorkerPool &pool,
                                 const Stretch &stretch)
{
    const QImage pixels = as32Bit(image);
    if (pixels.isNull() ||
        !fitsMemory(qint64(image.width()) * image.height() * qint64(sizeof(float))))
        return tooLarge();
    Heights heights;
    heights.size = pixels.size();
    heights.metres.resize(std::size_t(pixels.width()) * std::size_t(pixels.height()));
    const bool read = workOnPieces(
        pool, pixels.height(), RowsOfPiece, stretch, [&](int first, int last) {
            for (int y = first; y < last; ++y) {
                const QRgb *const row = rowOf(pixels, y);
                float *const metres = heights.row(y);
                for (int x = 0; x < pixels.width(); ++x)
                    metres[x] =
                        static_cast<float>(ElevationImage::stepsOf(row[x]) * unit);
            }
        });
    if (!read)
        return stopped();
    return heights;
}

double zScaleOf(double unit, double metresPerUnit, double exaggeration)
{
    const double scale = unit / metresPerUnit * exaggeration;
    return std::round(scale * Decimals) / Decimals;
}

double unitFor(double metresPerUnit, double exaggeration)
{
    double unit = SmallestUnit;
    for (int power = 0; unit < LargestUnit; ++power) {
        // Powers of ten from whole ones, so that 0.1 is 0.1.
        unit = power < 2 ? std::pow(10.0, power) / 100.0 : std::pow(10.0, power - 2);
        if (unit / metresPerUnit * std::abs(exaggeration) >= LeastZScale)
            break;
    }
    return unit;
}
