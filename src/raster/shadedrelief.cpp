#include "raster/shadedrelief.h"

#include "base/progress.h"
#include "raster/elevationimage.h"
#include "raster/pixelreader.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <new>
#include <vector>

namespace {

struct Tint {
    double at; // of the way from the lowest to the highest
    double red, green, blue;
};

// Our own tints: from green lowlands over ochre and brown to light summits.
constexpr std::array Tints{
    Tint{0.0, 92, 138, 94},    Tint{0.25, 156, 178, 118}, Tint{0.5, 214, 198, 146},
    Tint{0.75, 168, 134, 106}, Tint{1.0, 244, 242, 238},
};
constexpr int Colours = 1024;
constexpr double Sine45 = 0.70710678118654752;

std::vector<Tint> tintTable()
{
    std::vector<Tint> table(Colours);
    for (int i = 0; i < Colours; ++i) {
        const double at = double(i) / (Colours - 1);
        const auto above = std::find_if(Tints.begin() + 1, Tints.end() - 1,
                                        [at](const Tint &tint) { return tint.at >= at; });
        const Tint &low = *(above - 1);
        const double part = (at - low.at) / (above->at - low.at);
        const auto mixed = [part](double from, double to) {
            return from + (to - from) * part;
        };
        table[std::size_t(i)] = {at, mixed(low.red, above->red),
                                 mixed(low.green, above->green),
                                 mixed(low.blue, above->blue)};
    }
    return table;
}

// Rows of heights, with the first and the last column twice.
class HeightRows {
public:
    explicit HeightRows(const QImage &image)
        : m_image(image), m_reader(image), m_pixels(std::size_t(image.width()))
    {
    }

    void read(int y, std::vector<double> &row)
    {
        m_reader.readRow(std::clamp(y, 0, m_image.height() - 1), m_pixels.data());
        std::transform(m_pixels.begin(), m_pixels.end(), row.begin() + 1,
                       [](QRgb pixel) { return ElevationImage::stepsOf(pixel); });
        row.front() = row[1];
        row.back() = row[m_pixels.size()];
    }

private:
    const QImage &m_image;
    PixelReader m_reader;
    std::vector<QRgb> m_pixels;
};

// What a look at some of the pixels tells.
struct Range {
    double lowest = 0, highest = 0;
    double exaggeration = 1; // slopes of cells of one step's length times this
};

Range rangeOf(const QImage &image)
{
    constexpr int Samples = 512;      // along each side
    constexpr double WellSeen = 0.25; // a median slope of 14 degrees
    const PixelReader read(image);
    std::vector<int> heights, slopes;
    const int stepX = std::max(image.width() / Samples, 1);
    const int stepY = std::max(image.height() / Samples, 1);
    for (int y = 0; y < image.height(); y += stepY) {
        for (int x = 0; x < image.width(); x += stepX) {
            const int height = ElevationImage::stepsOf(read(x, y));
            heights.push_back(height);
            const int right = std::min(x + 1, image.width() - 1);
            const int slope = std::abs(ElevationImage::stepsOf(read(right, y)) - height);
            if (slope != 0)
                slopes.push_back(slope);
        }
    }
    // Single voids and errors are not to take all the colours.
    const auto quantile = [](std::vector<int> &values, double part) {
        const auto at = values.begin() +
                        static_cast<std::ptrdiff_t>(part * double(values.size() - 1));
        std::nth_element(values.begin(), at, values.end());
        return double(*at);
    };
    Range range{quantile(heights, 0.002), quantile(heights, 0.998), 1};
    if (!slopes.empty())
        range.exaggeration = WellSeen / quantile(slopes, 0.5);
    return range;
}

class Shader {
public:
    explicit Shader(const Range &range) : m_range(range), m_tints(tintTable()) {}

    // `above`, `row` and `below` begin one column before the first.
    void shade(const double *above, const double *row, const double *below, int width,
               QRgb *out) const
    {
        const double height = m_range.highest - m_range.lowest;
        const double toColour = height > 0 ? (Colours - 1) / height : 0;
        const double factor = m_range.exaggeration / 8;
        for (int x = 1; x <= width; ++x) {
            const double east = (above[x + 1] + 2 * row[x + 1] + below[x + 1] -
                                 above[x - 1] - 2 * row[x - 1] - below[x - 1]) *
                                factor;
            const double south = (below[x - 1] + 2 * below[x] + below[x + 1] -
                                  above[x - 1] - 2 * above[x] - above[x + 1]) *
                                 factor;
            // The light's vector times the normal's, and as much as level ground gets.
            const double lit = (1 + Sine45 * (east + south)) /
                               std::sqrt(1 + east * east + south * south);
            const double colour =
                std::clamp((row[x] - m_range.lowest) * toColour, 0.0, Colours - 1.0);
            out[x - 1] = pixel(m_tints[static_cast<std::size_t>(colour)], lit);
        }
    }

private:
    static QRgb pixel(const Tint &tint, double lit)
    {
        constexpr double Shadow = 0.25;
        const double light = Shadow + (1 - Shadow) * std::max(lit, 0.0);
        const auto byte = [light](double value) {
            return static_cast<int>(std::min(value * light, 255.0));
        };
        return qRgb(byte(tint.red), byte(tint.green), byte(tint.blue));
    }

    Range m_range;
    std::vector<Tint> m_tints;
};

Result<QImage> shaded(const QImage &heights, Progress &progress)
{
    QImage relief(heights.size(), QImage::Format_RGB32);
    if (relief.isNull())
        return failed(QCoreApplication::translate(
            "ShadedRelief", "There is not enough memory for the shaded relief."));
    HeightRows rows(heights);
    const auto width = static_cast<std::size_t>(heights.width()) + 2;
    std::vector<double> above(width), row(width), below(width);
    const Shader shader(rangeOf(heights));
    rows.read(0, row);
    above = row;
    for (int y = 0; y < heights.height(); ++y) {
        if (y % 16 == 0 && !progress.step(y, heights.height()))
            return stopped();
        rows.read(y + 1, below);
        shader.shade(above.data(), row.data(), below.data(), heights.width(),
                     reinterpret_cast<QRgb *>(relief.scanLine(y)));
        above.swap(row);
        row.swap(below);
    }
    return relief;
}

} // namespace

Result<QImage> shadedRelief(const QImage &heights, Progress &progress)
{
    if (heights.isNull())
        return QImage();
    try {
        return shaded(heights, progress);
    } catch (const std::bad_alloc &) {
        return failed(QCoreApplication::translate(
            "ShadedRelief", "There is not enough memory for the shaded relief."));
    }
}
