#include "raster/pngrows.h"

#include "base/alsowide.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

namespace {

using Byte = unsigned char;

// A row of bytes, and those to the left, above, and above to the left of each.
struct Neighbours {
    const Byte *here, *west, *north, *northWest;
    int count;
};

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

// What is left of a row, and the sum of that, taken as numbers with a sign.
template <typename Foretell>
[[gnu::always_inline]] inline unsigned int
leave(const Neighbours &row, Byte *__restrict out, const Foretell &foretell)
{
    constexpr int Block = 256; // of which the sum fits into 16 bits
    unsigned int whole = 0;
    for (int from = 0; from < row.count; from += Block) {
        const int end = std::min(from + Block, row.count);
        std::uint16_t sum = 0;
        for (int k = from; k < end; ++k) {
            const auto left = static_cast<Byte>(
                row.here[k] - foretell(row.west[k], row.north[k], row.northWest[k]));
            out[k] = left;
            sum = static_cast<std::uint16_t>(sum +
                                             std::min(left, static_cast<Byte>(-left)));
        }
        whole += sum;
    }
    return whole;
}

ALSO_WIDE
unsigned int leaveOfNone(const Neighbours &row, Byte *out)
{
    return leave(row, out, [](int, int, int) { return 0; });
}

ALSO_WIDE
unsigned int leaveOfWest(const Neighbours &row, Byte *out)
{
    return leave(row, out, [](int west, int, int) { return west; });
}

ALSO_WIDE
unsigned int leaveOfNorth(const Neighbours &row, Byte *out)
{
    return leave(row, out, [](int, int north, int) { return north; });
}

ALSO_WIDE
unsigned int leaveOfMean(const Neighbours &row, Byte *out)
{
    return leave(row, out, [](int west, int north, int) { return (west + north) >> 1; });
}

ALSO_WIDE
unsigned int leaveOfNearest(const Neighbours &row, Byte *out)
{
    return leave(row, out, nearest);
}

void unpackColours(const unsigned int *pixels, int width, int channels, unsigned char *to)
{
    for (int x = 0; x < width; ++x, to += channels) {
        to[0] = static_cast<unsigned char>(pixels[x] >> 16);
        to[1] = static_cast<unsigned char>(pixels[x] >> 8);
        to[2] = static_cast<unsigned char>(pixels[x]);
        if (channels == 4)
            to[3] = static_cast<unsigned char>(pixels[x] >> 24);
    }
}

// Rows of a picture, in a format whose rows can be taken: the picture's own memory where
// that is one.
QImage rowsToTake(const QImage &image, int from, int end)
{
    QImage rows(image.constScanLine(from), image.width(), end - from,
                image.bytesPerLine(), image.format());
    switch (image.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_Indexed8:
    case QImage::Format_RGB888:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
        return rows;
    default:
        break;
    }
    QImage converted = rows.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (converted.isNull())
        throw std::bad_alloc();
    return converted;
}

} // namespace

bool PngPixels::of(const QImage &image, PngPixels *pixels)
{
    switch (image.format()) {
    case QImage::Format_Grayscale8:
        pixels->colour = Colour::Gray;
        return true;
    case QImage::Format_Indexed8:
        pixels->colour = image.isGrayscale() ? Colour::Gray : Colour::Palette;
        return true;
    case QImage::Format_RGB32:
    case QImage::Format_RGB888:
    case QImage::Format_BGR888:
    case QImage::Format_RGBX8888:
        pixels->colour = Colour::Rgb;
        return true;
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
    case QImage::Format_RGBA8888:
        pixels->colour = Colour::Rgba;
        return true;
    default:
        return false; // of other depths
    }
}

int PngPixels::channels() const
{
    switch (colour) {
    case Colour::Rgb:
        return 3;
    case Colour::Rgba:
        return 4;
    default:
        return 1;
    }
}

PngRowFilter::PngRowFilter(PngPixels pixels, int width)
    : m_pixels(pixels), m_channels(pixels.channels()), m_count(width * m_channels),
      m_row(std::size_t(m_channels) + m_count, 0), m_above(m_row)
{
    for (auto &tried : m_tried)
        tried.resize(m_count);
}

void PngRowFilter::filter(const QImage &image, int from, int end, unsigned char *out)
{
    const int first = std::max(from - 1, 0);
    const QImage rows = rowsToTake(image, first, end);
    std::fill(m_row.begin(), m_row.end(), 0); // above the first row all is black
    if (from > first)
        take(rows, 0);
    for (int y = from; y < end; ++y, out += bytesOfRow()) {
        std::swap(m_row, m_above);
        take(rows, y - first);
        filterRow(out);
    }
}

void PngRowFilter::take(const QImage &rows, int y)
{
    const uchar *const from = rows.constScanLine(y);
    unsigned char *const to = m_row.data() + m_channels;
    if (rows.depth() == 32)
        unpackColours(reinterpret_cast<const unsigned int *>(from), m_count / m_channels,
                      m_channels, to);
    else
        std::copy_n(from, m_count, to);
}

void PngRowFilter::filterRow(unsigned char *out)
{
    if (m_pixels.colour == PngPixels::Colour::Palette) {
        *out = 0;
        std::copy_n(m_row.data() + m_channels, m_count, out + 1);
        return;
    }
    const int kind = tryAll();
    *out = static_cast<unsigned char>(kind);
    std::copy(m_tried[kind].begin(), m_tried[kind].end(), out + 1);
}

int PngRowFilter::tryAll()
{
    const Neighbours row{m_row.data() + m_channels, m_row.data(),
                         m_above.data() + m_channels, m_above.data(), m_count};
    const std::array<unsigned int, 5> left = {
        leaveOfNone(row, m_tried[0].data()), leaveOfWest(row, m_tried[1].data()),
        leaveOfNorth(row, m_tried[2].data()), leaveOfMean(row, m_tried[3].data()),
        leaveOfNearest(row, m_tried[4].data())};
    return static_cast<int>(std::min_element(left.begin(), left.end()) - left.begin());
}
