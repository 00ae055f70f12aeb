// Pictures as PNG: rows are filtered here, the compression is the library's.

#include "raster/pngwriter.h"

#include <QByteArray>
#include <QColorSpace>
#include <QIODevice>
#include <QImage>

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

// Rows and their compressed form are in memory at one time; what is larger is left to a
// writer that works piece by piece.
constexpr qsizetype MostBytes = qsizetype(64) << 20;
// The first level whose files are about as large as those of the toolkit: frames came
// out between 1 % smaller and 2 % larger.
constexpr int CompressionLevel = 4;

constexpr std::array<unsigned char, 8> Signature = {0x89, 'P',  'N',  'G',
                                                    0x0D, 0x0A, 0x1A, 0x0A};

// Bytes that need no first value: they are all written before they are read. Without
// data where there is not enough memory.
struct Bytes {
    explicit Bytes(std::size_t count)
        : data(new (std::nothrow) unsigned char[count]), size(count)
    {
    }
    std::unique_ptr<unsigned char[]> data;
    std::size_t size;
};

int channelsOf(const QImage &image) { return image.hasAlphaChannel() ? 4 : 3; }

void appendNumber(QByteArray &bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift & 0xFFu));
}

bool writeAll(QIODevice &device, const void *data, std::size_t size)
{
    const auto wanted = static_cast<qint64>(size);
    return device.write(static_cast<const char *>(data), wanted) == wanted;
}

// A chunk is its length, its type and contents, and their checksum.
bool writeChunk(QIODevice &device, const char *type, const void *contents,
                std::size_t size)
{
    QByteArray head;
    appendNumber(head, static_cast<std::uint32_t>(size));
    head.append(type, 4);
    QByteArray tail;
    appendNumber(tail, libdeflate_crc32(libdeflate_crc32(0, type, 4), contents, size));
    return device.write(head) == head.size() && writeAll(device, contents, size) &&
           device.write(tail) == tail.size();
}

bool writeHeader(QIODevice &device, const QImage &image)
{
    constexpr char Rgb = 2, Rgba = 6;
    QByteArray header;
    appendNumber(header, static_cast<std::uint32_t>(image.width()));
    appendNumber(header, static_cast<std::uint32_t>(image.height()));
    header.append(char(8)); // bits a channel
    header.append(channelsOf(image) == 4 ? Rgba : Rgb);
    header.append(3, '\0'); // deflate, adaptive filters, not interlaced
    return writeChunk(device, "IHDR", header.constData(), header.size());
}

bool writeResolution(QIODevice &device, const QImage &image)
{
    QByteArray resolution;
    appendNumber(resolution, std::max(image.dotsPerMeterX(), 0));
    appendNumber(resolution, std::max(image.dotsPerMeterY(), 0));
    resolution.append(char(1)); // a metre
    return writeChunk(device, "pHYs", resolution.constData(), resolution.size());
}

// Which neighbour is nearest to west + north - northWest. Numbers of 16 bits, of which
// more fit into a vector.
constexpr auto nearest = [](int west, int north, int northWest) {
    using Short = std::int16_t;
    const auto size = [](Short v) { return std::max(v, Short(-v)); };
    const auto beyondWest = Short(north - northWest);
    const auto beyondNorth = Short(west - northWest);
    const Short toWest = size(beyondWest);
    const Short toNorth = size(beyondNorth);
    const Short toBoth = size(Short(beyondWest + beyondNorth));
    const auto nearer = Short(toNorth < toWest ? north : west);
    return toBoth < std::min(toWest, toNorth) ? Short(northWest) : nearer;
};

// Filters the rows of a picture from top to bottom. A filter foretells each byte from
// those of the pixels to the left, above, and above to the left, and keeps the
// difference; each row takes the filter that leaves the least.
class RowFilter {
public:
    explicit RowFilter(const QImage &image)
        : m_channels(channelsOf(image)), m_count(image.width() * m_channels),
          m_row(m_channels + m_count, 0), m_above(m_row)
    {
        for (auto &tried : m_tried)
            tried.resize(m_count);
    }

    [[nodiscard]] std::size_t bytesOfRow() const { return std::size_t(m_count) + 1; }

    // Writes the kind of the filter and the filtered row to out.
    void filter(const unsigned int *pixels, unsigned char *out)
    {
        std::swap(m_row, m_above);
        unpack(pixels);
        const int kind = tryAll();
        *out = static_cast<unsigned char>(kind);
        std::copy(m_tried[kind].begin(), m_tried[kind].end(), out + 1);
    }

private:
    void unpack(const unsigned int *pixels)
    {
        unsigned char *to = m_row.data() + m_channels;
        const int width = m_count / m_channels;
        for (int x = 0; x < width; ++x, to += m_channels) {
            to[0] = static_cast<unsigned char>(pixels[x] >> 16);
            to[1] = static_cast<unsigned char>(pixels[x] >> 8);
            to[2] = static_cast<unsigned char>(pixels[x]);
            if (m_channels == 4)
                to[3] = static_cast<unsigned char>(pixels[x] >> 24);
        }
    }

    int tryAll()
    {
        const std::array<unsigned int, 5> left = {
            tryOne(0, [](int, int, int) { return 0; }),
            tryOne(1, [](int west, int, int) { return west; }),
            tryOne(2, [](int, int north, int) { return north; }),
            tryOne(3, [](int west, int north, int) { return (west + north) >> 1; }),
            tryOne(4, nearest)};
        return static_cast<int>(std::min_element(left.begin(), left.end()) -
                                left.begin());
    }

    // The sum of the differences, taken as numbers with a sign.
    template <typename Foretell> unsigned int tryOne(int kind, const Foretell &foretell)
    {
        const unsigned char *const row = m_row.data() + m_channels;
        const unsigned char *const west = m_row.data();
        const unsigned char *const north = m_above.data() + m_channels;
        const unsigned char *const northWest = m_above.data();
        unsigned char *const out = m_tried[kind].data();
        unsigned int sum = 0;
        for (int k = 0; k < m_count; ++k) {
            const auto difference = static_cast<unsigned char>(
                row[k] - foretell(west[k], north[k], northWest[k]));
            out[k] = difference;
            sum += std::min(difference, static_cast<unsigned char>(-difference));
        }
        return sum;
    }

    int m_channels;
    int m_count;                               // bytes of a row
    std::vector<unsigned char> m_row, m_above; // with a black pixel before the first
    std::array<std::vector<unsigned char>, 5> m_tried; // by kind
};

Bytes filteredRows(const QImage &image)
{
    RowFilter filter(image);
    Bytes rows(filter.bytesOfRow() * image.height());
    for (int y = 0; rows.data && y < image.height(); ++y)
        filter.filter(reinterpret_cast<const unsigned int *>(image.constScanLine(y)),
                      rows.data.get() + filter.bytesOfRow() * y);
    return rows;
}

bool writePixels(QIODevice &device, const QImage &image)
{
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)>
        compressor(libdeflate_alloc_compressor(CompressionLevel),
                   &libdeflate_free_compressor);
    const Bytes rows = filteredRows(image);
    if (!compressor || !rows.data)
        return false;
    const Bytes packed(libdeflate_zlib_compress_bound(compressor.get(), rows.size));
    if (!packed.data)
        return false;
    const std::size_t size = libdeflate_zlib_compress(
        compressor.get(), rows.data.get(), rows.size, packed.data.get(), packed.size);
    return size != 0 && writeChunk(device, "IDAT", packed.data.get(), size);
}

} // namespace

bool isPlainPicture(const QImage &image)
{
    return (image.format() == QImage::Format_RGB32 ||
            image.format() == QImage::Format_ARGB32) &&
           !image.isNull() && image.sizeInBytes() <= MostBytes &&
           image.textKeys().isEmpty() && !image.colorSpace().isValid() &&
           image.offset().isNull();
}

bool writePng(QIODevice &device, const QImage &image)
{
    return writeAll(device, Signature.data(), Signature.size()) &&
           writeHeader(device, image) && writeResolution(device, image) &&
           writePixels(device, image) && writeChunk(device, "IEND", "", 0);
}
