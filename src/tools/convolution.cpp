#include "tools/convolution.h"

#include "raster/imagerows.h"

#include <QObject>

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr int MostKernelPixels = 16384;
constexpr int WeightOfZero = 128; // the byte that stands for a weight of 0
constexpr int Channels = 3;       // red, green, blue
// Taps that one pass over a row takes; kernel rows are filled up with zeros.
constexpr int TapsAtOnce = 2;

// Sums cannot overflow: 16384 * 255 * 128 is below 2^29.
using Sum = qint32;
using Sample = uchar;
using Weight = qint16;

int channelOf(QRgb colour, int channel)
{
    return static_cast<int>((colour >> (16 - 8 * channel)) & 0xFF);
}

// The weights of one channel, and the sums over all rectangles at its corner.
class Weights {
public:
    Weights(const QImage &kernel, int channel)
        : m_paddedWidth((kernel.width() + TapsAtOnce - 1) / TapsAtOnce * TapsAtOnce),
          m_sumsWidth(kernel.width() + 1),
          m_taps(size_t(m_paddedWidth) * kernel.height()),
          m_sums(size_t(m_sumsWidth) * (kernel.height() + 1))
    {
        for (int y = 0; y < kernel.height(); ++y) {
            const QRgb *const pixels = rowOf(kernel, y);
            Weight *const taps = m_taps.data() + size_t(y) * m_paddedWidth;
            const Sum *const above = m_sums.data() + size_t(y) * m_sumsWidth;
            Sum *const sums = m_sums.data() + size_t(y + 1) * m_sumsWidth;
            Sum sum = 0;
            for (int x = 0; x < kernel.width(); ++x) {
                const int weight = channelOf(pixels[x], channel) - WeightOfZero;
                taps[x] = static_cast<Weight>(weight);
                sum += weight;
                sums[x + 1] = above[x + 1] + sum;
            }
        }
    }

    [[nodiscard]] int paddedWidth() const { return m_paddedWidth; }
    [[nodiscard]] const Weight *row(int y) const
    {
        return m_taps.data() + size_t(y) * m_paddedWidth;
    }

    // Sums of the weights in rows first to end - 1, left of each column.
    void sumsLeftOf(int first, int end, std::vector<Sum> &out) const
    {
        const Sum *const upper = m_sums.data() + size_t(first) * m_sumsWidth;
        const Sum *const lower = m_sums.data() + size_t(end) * m_sumsWidth;
        out.resize(size_t(m_sumsWidth));
        for (int x = 0; x < m_sumsWidth; ++x)
            out[x] = lower[x] - upper[x];
    }

private:
    int m_paddedWidth;
    int m_sumsWidth;
    std::vector<Weight> m_taps;
    std::vector<Sum> m_sums;
};

// The image's rows that the kernel covers, channel by channel, with zeros on
// both sides: what lies outside adds nothing to a sum.
class SampleRows {
public:
    SampleRows(const QImage &image, int kernelHeight, int before, int paddedWidth)
        : m_image(image), m_before(before),
          m_capacity(std::min(kernelHeight, image.height())),
          m_length(size_t(image.width()) + paddedWidth),
          m_samples(m_length * Channels * m_capacity)
    {
    }

    // Makes the rows up to `end` available; the oldest ones give way.
    void readUpTo(int end)
    {
        for (; m_next < end; ++m_next) {
            const QRgb *const pixels = rowOf(m_image, m_next);
            for (int channel = 0; channel < Channels; ++channel) {
                Sample *const out = start(m_next, channel) + m_before;
                for (int x = 0; x < m_image.width(); ++x)
                    out[x] = static_cast<Sample>(channelOf(pixels[x], channel));
            }
        }
    }

    // Starts `before` samples left of column 0.
    [[nodiscard]] const Sample *row(int y, int channel) { return start(y, channel); }

private:
    Sample *start(int y, int channel)
    {
        return m_samples.data() +
               (size_t(y % m_capacity) * Channels + channel) * m_length;
    }

    const QImage &m_image;
    int m_before;
    int m_capacity;
    size_t m_length;
    std::vector<Sample> m_samples;
    int m_next = 0;
};

// sums[x] += the kernel row laid on the samples from x on.
void addKernelRow(const Sample *samples, const Weight *taps, int tapCount, Sum *sums,
                  int width)
{
    for (int t = 0; t < tapCount; t += TapsAtOnce) {
        const Weight k0 = taps[t];
        const Weight k1 = taps[t + 1];
        if (k0 == 0 && k1 == 0)
            continue;
        const Sample *const s = samples + t;
        for (int x = 0; x < width; ++x)
            sums[x] += s[x] * k0 + s[x + 1] * k1;
    }
}

int quotient(Sum values, Sum weights)
{
    return weights == 0 ? 0 : static_cast<int>(double(values) / weights);
}

// One run over an image: rows from the top, channel by channel.
class Convolution {
public:
    Convolution(const QImage &image, const QImage &kernel)
        : m_width(image.width()), m_height(image.height()), m_kernelWidth(kernel.width()),
          m_kernelHeight(kernel.height()), m_weights{Weights(kernel, 0),
                                                     Weights(kernel, 1),
                                                     Weights(kernel, 2)},
          m_samples(image, kernel.height(), kernel.width() / 2,
                    m_weights[0].paddedWidth()),
          m_sums(size_t(m_width))
    {
    }

    // The filtered row y, for y from 0 on without a gap.
    void row(int y, uchar *out)
    {
        const int top = y - m_kernelHeight / 2; // image row under kernel row 0
        const int first = std::max(0, -top);
        const int end = std::min(m_kernelHeight, m_height - top);
        m_samples.readUpTo(top + end);
        for (int channel = 0; channel < Channels; ++channel) {
            const Weights &weights = m_weights[channel];
            std::fill(m_sums.begin(), m_sums.end(), Sum(0));
            for (int ky = first; ky < end; ++ky)
                addKernelRow(m_samples.row(top + ky, channel), weights.row(ky),
                             weights.paddedWidth(), m_sums.data(), m_width);
            weights.sumsLeftOf(first, end, m_weightSums);
            divide(out + channel);
        }
    }

    // Quotients of the rows up to now that no byte holds.
    [[nodiscard]] qint64 cut() const { return m_cut; }

private:
    // Kernel columns that fall outside the image take no weight either.
    void divide(uchar *out)
    {
        constexpr unsigned MostOfAByte = 255;
        const int before = m_kernelWidth / 2;
        int cut = 0;
        for (int x = 0; x < m_width; ++x) {
            const int first = std::max(0, before - x);
            const int end = std::min(m_kernelWidth, m_width - x + before);
            const int value =
                quotient(m_sums[x], m_weightSums[end] - m_weightSums[first]);
            out[qsizetype(x) * Channels] = static_cast<uchar>(value);
            cut += static_cast<unsigned>(value) > MostOfAByte ? 1 : 0;
        }
        m_cut += cut;
    }

    int m_width;
    int m_height;
    int m_kernelWidth;
    int m_kernelHeight;
    std::array<Weights, Channels> m_weights;
    SampleRows m_samples;
    std::vector<Sum> m_sums;       // of the row and channel in hand
    std::vector<Sum> m_weightSums; // left of each kernel column
    qint64 m_cut = 0;
};

} // namespace

bool kernelFits(const QSize &size)
{
    return qint64(size.width()) * size.height() <= MostKernelPixels;
}

Result<QImage> convolve(const QImage &image, const QImage &kernel, Progress &progress,
                        qint64 *cut)
{
    if (!kernelFits(kernel.size()))
        return failed(
            QObject::tr("The kernel has more than %1 pixels.").arg(MostKernelPixels));
    const QImage source = as32Bit(image);
    const QImage kernelPixels = as32Bit(kernel);
    QImage filtered(image.size(), QImage::Format_RGB888);
    if (filtered.isNull() || source.isNull() || kernelPixels.isNull())
        return failed(QObject::tr("There is not enough memory for the picture."));

    Convolution convolution(source, kernelPixels);
    for (int y = 0; y < filtered.height(); ++y) {
        if (!progress.step(y, filtered.height()))
            return stopped();
        convolution.row(y, filtered.scanLine(y));
    }
    if (cut != nullptr)
        *cut = convolution.cut();
    return filtered;
}
