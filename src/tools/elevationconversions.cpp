#include "tools/elevationconversions.h"

#include "base/truncate.h"
#include "raster/imagerows.h"
#include "raster/pixelreader.h"

#include <algorithm>
#include <cstring>
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

void cutToGrays(ElevationImage &image, GrayConversion &conversion)
{
    const int width = image.width();
    const double scale = conversion.zScale;
    GrayConversion found = conversion; // a local: kept in registers
    editRows(image, [&found, width, scale](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const double v = ElevationImage::stepsOf(row[x]) * scale;
            found.minValue = std::min(found.minValue, v);
            found.maxValue = std::max(found.maxValue, v);
            row[x] = grayOf(v, found);
        }
    });
    conversion = found;
}

void spreadOverGrays(ElevationImage &image, GrayConversion &conversion)
{
    const int width = image.width();
    const double scale = conversion.zScale;
    const double lowest = conversion.minValue;
    const double extent = conversion.maxValue - lowest;
    editRows(image, [&conversion, width, scale, lowest, extent](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const double v = ElevationImage::stepsOf(row[x]) * scale;
            row[x] = grayOf((v - lowest) / extent * 255.0, conversion);
        }
    });
}

} // namespace

void elevationToGray(ElevationImage &image, bool normalize, GrayConversion &conversion)
{
    makeEditable(image);
    conversion.belowCount = 0;
    conversion.aboveCount = 0;
    if (normalize) {
        spreadOverGrays(image, conversion);
        return;
    }
    conversion.minValue = GrayConversion::Beyond;
    conversion.maxValue = -GrayConversion::Beyond;
    cutToGrays(image, conversion);
}

ElevationLimits grayToElevation(ElevationImage &image)
{
    makeEditable(image);
    const int width = image.width();
    int lowest = 3 * 255;
    int highest = 0;
    editRows(image, [width, &lowest, &highest](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const int sum = qRed(row[x]) + qGreen(row[x]) + qBlue(row[x]);
            lowest = std::min(lowest, sum);
            highest = std::max(highest, sum);
            row[x] = 0xFF000000u | static_cast<QRgb>(sum);
        }
    });
    return {double(lowest), double(highest)};
}

ElevationLimits elevationRange(const ElevationImage &image, bool ignoreZeros)
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

void spreadTopRow(QImage &palette)
{
    if (palette.isNull())
        return;
    const size_t length = static_cast<size_t>(palette.bytesPerLine());
    uchar *const bits = palette.bits();
    for (int y = 1; y < palette.height(); ++y)
        std::memcpy(bits + y * palette.bytesPerLine(), bits, length);
}

bool elevationToColor(ElevationImage &image, const QImage &palette, int lower, int upper)
{
    if (palette.isNull())
        return false;
    const int last = palette.width() - 1;
    std::vector<QRgb> colours(static_cast<size_t>(palette.width()));
    PixelReader(palette).readRow(0, colours.data());
    // With equal or swapped limits no elevation is between them.
    const double factor =
        upper > lower ? palette.width() / (double(upper) - double(lower)) : 0.0;

    makeEditable(image);
    const int width = image.width();
    editRows(image, [&colours, width, last, lower, upper, factor](QRgb *row) {
        for (int x = 0; x < width; ++x) {
            const int e = ElevationImage::stepsOf(row[x]);
            int index = 0;
            if (e >= lower) {
                index = last;
                if (e < upper) {
                    const double place = (double(e) - lower) * factor + 0.5;
                    index = std::clamp(static_cast<int>(place), 0, last);
                }
            }
            row[x] = colours[index];
        }
    });
    return true;
}

void changeBlue0Pixels(QImage &image)
{
    makeEditable(image);
    const int width = image.width();
    editRows(image, [width](QRgb *row) {
        for (int x = 0; x < width; ++x)
            if ((row[x] & 0xFFu) == 0)
                row[x] = 0xFF000001u | (row[x] & 0x00FFFF00u);
    });
}
