#include "tools/resample.h"

#include "base/memorybudget.h"
#include "base/truncate.h"
#include "raster/bilinear.h"
#include "raster/imagerows.h"

#include <QObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

// One bilinear read along a line of pixels: between `index` and its successor.
struct Sample {
    int index = 0;
    double fraction = 0.0;
    bool inside = false;
};

Sample sampleAt(double position, int count)
{
    if (!(position >= 0.0 && position < count - 1))
        return {};
    return {static_cast<int>(position), position - std::floor(position), true};
}

// The elevations of the two source rows in hand, decoded once each.
class DecodedRows {
public:
    explicit DecodedRows(const QImage &image) : m_image(image)
    {
        for (std::vector<double> &row : m_rows)
            row.resize(static_cast<size_t>(image.width()));
    }

    const double *row(int y)
    {
        const int slot = y & 1; // neighbours never share a slot
        if (m_held[slot] != y) {
            const QRgb *const pixels = rowOf(m_image, y);
            std::transform(pixels, pixels + m_image.width(), m_rows[slot].begin(),
                           [](QRgb p) { return double(ElevationImage::stepsOf(p)); });
            m_held[slot] = y;
        }
        return m_rows[slot].data();
    }

private:
    const QImage &m_image;
    std::array<std::vector<double>, 2> m_rows;
    std::array<int, 2> m_held{-1, -1};
};

// Low 24 bits of an elevation rounded to nearest, halves away from zero: what
// ElevationImage::pixelOf gives for a z scale of 1.
QRgb stepsToStore(double e) { return lowBitsOfTruncated<24>(halfAwayFromZero(e)); }

bool isStored(double e)
{
    return e > ElevationImage::LowestStep - 0.5 && e < ElevationImage::HighestStep + 0.5;
}

void store(QRgb steps, uchar *pixel)
{
    pixel[0] = static_cast<uchar>(steps >> 16);
    pixel[1] = static_cast<uchar>(steps >> 8);
    pixel[2] = static_cast<uchar>(steps);
}

} // namespace

int pixelsOfPercent(int source, double percent)
{
    return truncatedPlusHalf(source * percent / 100.0);
}

double percentOfPixels(int source, int pixels) { return pixels * 100.0 / source; }

QSize resampledSize(const QSize &source, const ResampleRequest &request)
{
    const auto percentOf = [](const std::optional<int> &pixels, int side,
                              const std::optional<double> &percent) {
        return pixels ? std::optional(percentOfPixels(side, *pixels)) : percent;
    };
    const auto sideOf = [](const std::optional<int> &pixels, int side, double percent) {
        return std::clamp(pixels.value_or(pixelsOfPercent(side, percent)), 0,
                          ResampleRequest::MostPixels);
    };
    const auto x = percentOf(request.pixelX, source.width(), request.percentX);
    const auto y = percentOf(request.pixelY, source.height(), request.percentY);
    const double unasked = 100.0;
    return {sideOf(request.pixelX, source.width(), x.value_or(y.value_or(unasked))),
            sideOf(request.pixelY, source.height(), y.value_or(x.value_or(unasked)))};
}

Result<ElevationImage> resample(const ElevationImage &source,
                                const ResampleOptions &options, Progress &progress,
                                qint64 *cut)
{
    const int width = options.size.width();
    const int height = options.size.height();
    const qint64 claim = qint64(width) * height * 3 +
                         qint64(source.width()) * source.height() * 4; // as it is read
    const auto noOutput = [] {
        return failed(QObject::tr("Could not create output file."));
    };
    if (!claimMemory(QObject::tr("Resampling to %1 x %2 pixels").arg(width).arg(height),
                     claim))
        return noOutput();
    ElevationImage destination(options.size, QImage::Format_RGB888);
    const QImage pixels = as32Bit(source);
    if (pixels.isNull() || destination.isNull())
        return noOutput();
    const double rx = double(source.width()) / width;
    const double ry = double(source.height()) / height;

    std::vector<Sample> columns;
    columns.reserve(static_cast<size_t>(width));
    for (int c = 0; c < width; ++c)
        columns.push_back(sampleAt(c * rx, source.width()));

    qint64 beyond = 0;
    DecodedRows rows(pixels);
    for (int r = 0; r < height; ++r) {
        if (!progress.step(r, height))
            return stopped();
        // Rows are counted upward in the source and written downward.
        uchar *out = destination.scanLine(height - 1 - r);
        const Sample line = sampleAt(source.height() - r * ry - 1.0, source.height());
        if (!line.inside) {
            std::fill_n(out, qsizetype(width) * 3, uchar(0));
            continue;
        }
        const double *const upper = rows.row(line.index);
        const double *const lower = rows.row(line.index + 1);
        const double fy = line.fraction;
        for (const Sample &column : columns) {
            double e = 0.0;
            if (column.inside) {
                const int i = column.index;
                const double fx = column.fraction;
                e = bilinear(upper[i], upper[i + 1], lower[i], lower[i + 1], fx, fy) *
                    options.zScale;
            }
            beyond += isStored(e) ? 0 : 1;
            store(stepsToStore(e), out);
            out += 3;
        }
    }
    if (cut != nullptr)
        *cut = beyond;
    return destination;
}
