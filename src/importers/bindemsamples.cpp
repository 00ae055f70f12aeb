#include "importers/bindemsamples.h"

#include "base/truncate.h"
#include "importers/bindemconversion.h"
#include "raster/elevationimage.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace {

using Pixel = std::array<uchar, 3>; // red, green, blue

// Holds an elevation within what a pixel can store; the limits count in single
// precision.
double clamped(double elevation)
{
    constexpr float Highest = ElevationImage::HighestStep;
    constexpr float Lowest = ElevationImage::LowestStep;
    const float single = static_cast<float>(elevation);
    if (single > Highest)
        return Highest;
    return single < Lowest ? Lowest : elevation;
}

bool isCut(double elevation) { return clamped(elevation) != elevation; }

Pixel pixelOf(double elevation)
{
    const QRgb pixel = ElevationImage::pixelOf(elevation, 1.0);
    return {static_cast<uchar>(qRed(pixel)), static_cast<uchar>(qGreen(pixel)),
            static_cast<uchar>(qBlue(pixel))};
}

// Samples of one or two bytes: few enough values to work out every pixel beforehand.
class IntegerSamples : public BinDemSamples {
public:
    void addRange(StoredRange *range) const override
    {
        if (m_lowest > m_highest)
            return; // no sample yet
        // The scale keeps or reverses the order, so the extremes are at the ends.
        range->include(elevationOf(m_lowest));
        range->include(elevationOf(m_highest));
    }

protected:
    IntegerSamples(double zScale, int first, int last) : m_zScale(zScale), m_first(first)
    {
        for (int value = first; value <= last; ++value) {
            m_pixels.push_back(::pixelOf(elevationOf(value)));
            m_isCut.push_back(::isCut(value * zScale) ? 1 : 0);
        }
    }

    [[nodiscard]] const Pixel &pixelOf(int value) const
    {
        return m_pixels[static_cast<std::size_t>(value - m_first)];
    }
    /// 1 for a value that is beyond what a pixel holds, else 0.
    [[nodiscard]] int cutOf(int value) const
    {
        return m_isCut[static_cast<std::size_t>(value - m_first)];
    }
    void include(int lowest, int highest)
    {
        m_lowest = std::min(m_lowest, lowest);
        m_highest = std::max(m_highest, highest);
    }

    static constexpr int Beyond = 1 << 20; // any sample

private:
    [[nodiscard]] double elevationOf(int value) const
    {
        return clamped(value * m_zScale);
    }

    double m_zScale;
    int m_first;
    std::vector<Pixel> m_pixels;
    std::vector<uchar> m_isCut; // beside them
    int m_lowest = Beyond;
    int m_highest = -Beyond;
};

class ByteSamples : public IntegerSamples {
public:
    ByteSamples(double zScale, int statisticsMaximum)
        : IntegerSamples(zScale, -256, 255), m_statisticsMaximum(statisticsMaximum)
    {
    }

    void convert(const QByteArray &row, uchar *pixels) override
    {
        int lowest = Beyond;
        int highest = -Beyond;
        for (const char byte : row) {
            int value = static_cast<uchar>(byte);
            if (value > m_statisticsMaximum)
                value -= 256;
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
            m_losses.cut += cutOf(value);
            pixels = std::copy_n(pixelOf(value).data(), 3, pixels);
        }
        include(lowest, highest);
    }

private:
    int m_statisticsMaximum;
};

quint16 low16Bits(double value)
{
    return static_cast<quint16>(lowBitsOfTruncated<16>(value));
}

template <bool BigEndian, typename Word> Word wordAt(const char *bytes)
{
    return BigEndian ? qFromBigEndian<Word>(bytes) : qFromLittleEndian<Word>(bytes);
}

template <bool BigEndian> class WordSamples : public IntegerSamples {
public:
    // A raster without a value for "no data" has 0 for it, which changes nothing.
    WordSamples(const BinDemHeader &header, const BinDemOptions &options)
        : IntegerSamples(options.zScale, -32768, 32767),
          m_dropped(options.keepNoDataValues ? quint16(0)
                                             : low16Bits(header.noDataValue)),
          m_voidsPerDropped(header.hasNoDataValue && !options.keepNoDataValues ? 1 : 0)
    {
    }

    void convert(const QByteArray &row, uchar *pixels) override
    {
        int lowest = Beyond;
        int highest = -Beyond;
        const char *const end = row.constData() + row.size();
        for (const char *p = row.constData(); p != end; p += 2) {
            const quint16 word = wordAt<BigEndian, quint16>(p);
            const bool isDropped = word == m_dropped;
            const int value = isDropped ? 0 : static_cast<qint16>(word);
            m_losses.voids += isDropped ? m_voidsPerDropped : 0;
            m_losses.cut += cutOf(value);
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
            pixels = std::copy_n(pixelOf(value).data(), 3, pixels);
        }
        include(lowest, highest);
    }

private:
    quint16 m_dropped;
    int m_voidsPerDropped;
};

template <bool BigEndian> class FloatSamples : public BinDemSamples {
public:
    FloatSamples(const BinDemHeader &header, const BinDemOptions &options)
        : m_zScale(options.zScale),
          m_dropped(options.keepNoDataValues ? 0.0f
                                             : static_cast<float>(header.noDataValue)),
          m_voidsPerDropped(header.hasNoDataValue && !options.keepNoDataValues ? 1 : 0)
    {
    }

    void convert(const QByteArray &row, uchar *pixels) override
    {
        const char *const end = row.constData() + row.size();
        for (const char *p = row.constData(); p != end; p += 4) {
            const float sample = std::bit_cast<float>(wordAt<BigEndian, quint32>(p));
            const bool isDropped = sample == m_dropped;
            const float value = isDropped ? 0.0f : sample;
            const double elevation = clamped(value * m_zScale);
            m_losses.voids += isDropped ? m_voidsPerDropped : 0;
            m_losses.cut += elevation != value * m_zScale ? 1 : 0;
            m_range.include(elevation);
            pixels = std::copy_n(::pixelOf(elevation).data(), 3, pixels);
        }
    }

    void addRange(StoredRange *range) const override
    {
        if (m_range.minimum > m_range.maximum)
            return; // no sample yet that is a number
        range->include(m_range.minimum);
        range->include(m_range.maximum);
    }

private:
    double m_zScale;
    float m_dropped;
    int m_voidsPerDropped;
    StoredRange m_range;
};

template <template <bool> class Samples>
std::unique_ptr<BinDemSamples> inByteOrder(const BinDemHeader &header,
                                           const BinDemOptions &options)
{
    if (header.isBigEndian())
        return std::make_unique<Samples<true>>(header, options);
    return std::make_unique<Samples<false>>(header, options);
}

} // namespace

std::unique_ptr<BinDemSamples> makeSampleConverter(const BinDemHeader &header,
                                                   const BinDemOptions &options)
{
    switch (header.bitsPerPixel / 8) {
    case 1:
        return std::make_unique<ByteSamples>(options.zScale, options.statisticsMaximum);
    case 2:
        return inByteOrder<WordSamples>(header, options);
    case 4:
        return inByteOrder<FloatSamples>(header, options);
    default:
        return nullptr;
    }
}
