#include "tools/elevationconversions.h"

#include "base/truncate.h"
#include "raster/imagerows.h"
#include "raster/pixelreader.h"

#include <QObject>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace {

constexpr QRgb opaqueGray(int gray)
{
    return 0xFF000000u | static_cast<QRgb>(gray) * 0x010101u;
}

// The gray of one value, counting what is cut off. A value that is no number
// (the range to normalize is a single value) is gray 0.
QRgb grayOf(double g, GrayConversion &conversion)
{
    if (g <= -0.5) {
        ++conversion.belowCount;
        return opaqueGray(0);
    }
    if (g >= 255.5) {
        ++conversion.aboveCount;
        return opaqueGray(255);
    }
    return opaqueGray(truncatedPlusHalf(g));
}

// Edits all rows from the top, a step before each. False if that was stopped.
template <class Edit> bool editRows(QImage &image, Progress &progress, Edit &&edit)
{
    makeEditable(image);
    const int height = image.height();
    int y = 0;
    return editRows(image, [&edit, &progress, &y, height](QRgb *row) {
        if (!progress.step(y++, height))
            return false;
        edit(row);
        return true;
    });
}

bool cutToGrays(ElevationImage &image, GrayConversion &conversion, Progress &progress)
{
    const int width = image.width();
    const double scale = conversion.zScale;
    GrayConversion found = conversion; // a local: kept in registers
    const bool done = editRows(image, progress, [&found, width, scale](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const double v = ElevationImage::stepsOf(row[x]) * scale;
            found.minValue = std::min(found.minValue, v);
            found.maxValue = std::max(found.maxValue, v);
            row[x] = grayOf(v, found);
        }
    });
    conversion = found;
    return done;
}

bool spreadOverGrays(ElevationImage &image, GrayConversion &conversion,
                     Progress &progress)
{
    const int width = image.width();
    const double scale = conversion.zScale;
    const double lowest = conversion.minValue;
    const double extent = conversion.maxValue - lowest;
    const auto spread = [&conversion, width, scale, lowest, extent](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const double v = ElevationImage::stepsOf(row[x]) * scale;
            row[x] = grayOf((v - lowest) / extent * 255.0, conversion);
        }
    };
    return editRows(image, progress, spread);
}

} // namespace

Result<GrayPicture> elevationToGray(ElevationImage image, double zScale,
                                    Progress &progress)
{
    GrayConversion found;
    found.zScale = zScale;
    if (!cutToGrays(image, found, progress))
        return stopped();
    return GrayPicture{std::move(image), found};
}

Result<GrayPicture> normalizeToGray(ElevationImage image, const GrayConversion &found,
                                    Progress &progress)
{
    GrayConversion conversion = found;
    conversion.belowCount = 0;
    conversion.aboveCount = 0;
    if (!spreadOverGrays(image, conversion, progress))
        return stopped();
    return GrayPicture{std::move(image), conversion};
}

Result<SummedElevations> grayToElevation(ElevationImage image, Progress &progress)
{
    const int width = image.width();
    int lowest = 3 * 255;
    int highest = 0;
    const auto sumUp = [width, &lowest, &highest](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const int sum = qRed(row[x]) + qGreen(row[x]) + qBlue(row[x]);
            lowest = std::min(lowest, sum);
            highest = std::max(highest, sum);
            row[x] = 0xFF000000u | static_cast<QRgb>(sum);
        }
    };
    if (!editRows(image, progress, sumUp))
        return stopped();
    return SummedElevations{std::move(image), {double(lowest), double(highest)}};
}

ElevationLimits elevationRange(const QImage &image, bool ignoreZeros)
{
    // Beyond every stored integer, so that it tells an empty search.
    constexpr int None = ElevationImage::HighestStep + 1;
    int lowest = None;
    int highest = -None - 1;
    QImage pixels = image; // shares the buffer, unless rows cannot be read as they are
    makeEditable(pixels);
    const PixelReader reader(pixels);
    std::vector<QRgb> row(static_cast<size_t>(pixels.width()));
    for (int y = 0; y < pixels.height(); ++y) {
        reader.readRow(y, row.data());
        for (const QRgb pixel : row) {
            const int steps = ElevationImage::stepsOf(pixel);
            highest = std::max(highest, steps);
            lowest = std::min(lowest, ignoreZeros && steps == 0 ? None : steps);
        }
    }
    ElevationLimits range;
    if (lowest != None)
        range.lowest = lowest;
    if (highest >= ElevationImage::LowestStep)
        range.highest = highest;
    return range;
}

int elevationAsInteger(double elevation)
{
    return static_cast<int>(std::clamp(elevation, double(ElevationImage::LowestStep),
                                       double(ElevationImage::HighestStep)));
}

QImage withTopRowSpread(QImage palette)
{
    if (palette.isNull())
        return palette;
    const size_t length = static_cast<size_t>(palette.bytesPerLine());
    uchar *const bits = palette.bits();
    for (int y = 1; y < palette.height(); ++y)
        std::memcpy(bits + y * palette.bytesPerLine(), bits, length);
    return palette;
}

Result<QImage> elevationToColor(ElevationImage image, const QImage &palette, int lower,
                                int upper, Progress &progress, qint64 *cut)
{
    if (palette.isNull())
        return failed(QObject::tr("There is no palette."));
    const int last = palette.width() - 1;
    std::vector<QRgb> colours(static_cast<size_t>(palette.width()));
    PixelReader(palette).readRow(0, colours.data());
    // With equal or swapped limits no elevation is between them.
    const double factor =
        upper > lower ? palette.width() / (double(upper) - double(lower)) : 0.0;

    const int width = image.width();
    qint64 beyond = 0;
    const auto colour = [&colours, &beyond, width, last, lower, upper,
                         factor](QRgb *row) {
        int beyondInRow = 0;
        for (int x = 0; x < width; ++x) {
            const int e = ElevationImage::stepsOf(row[x]);
            int index = 0;
            beyondInRow += e < lower || e > upper ? 1 : 0;
            if (e >= lower) {
                index = last;
                if (e < upper) {
                    const double place = (double(e) - lower) * factor + 0.5;
                    index = std::clamp(static_cast<int>(place), 0, last);
                }
            }
            row[x] = colours[index];
        }
        beyond += beyondInRow;
    };
    if (!editRows(image, progress, colour))
        return stopped();
    if (cut != nullptr)
        *cut = beyond;
    return image;
}

Result<QImage> changeBlue0Pixels(QImage image, Progress &progress)
{
    const int width = image.width();
    const auto change = [width](QRgb *row) {
        for (int x = 0; x < width; ++x)
            if ((row[x] & 0xFFu) == 0)
                row[x] = 0xFF000001u | (row[x] & 0x00FFFF00u);
    };
    if (!editRows(image, progress, change))
        return stopped();
    return image;
}
