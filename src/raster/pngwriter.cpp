// Pictures as PNG: rows are filtered and packed here, in pieces; all that is not pixels
// is written as the toolkit writes it.

#include "raster/pngwriter.h"

#include "base/progress.h"
#include "raster/pngpixelwriter.h"
#include "raster/pngrows.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <libdeflate.h>

#include <cstdint>
#include <new>
#include <optional>
#include <thread>

namespace {

void putNumber(unsigned char *to, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        *to++ = static_cast<unsigned char>(value >> shift);
}

// --- All but the pixels ----------------------------------------------------------

// The chunks of a file before and behind its pixels, signature and end included.
struct Surroundings {
    QByteArray before, behind;
};

std::uint32_t numberAt(const QByteArray &bytes, qsizetype at)
{
    std::uint32_t number = 0;
    for (qsizetype i = at; i < at + 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

// What the toolkit writes around the pixels of a picture with one of them.
std::optional<Surroundings> surroundingsOf(const QImage &image)
{
    constexpr qsizetype Signature = 8, Head = 8, Sum = 4;
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) ||
        !QImageWriter(&buffer, "png").write(image.copy(0, 0, 1, 1)))
        return {};
    const QByteArray file = buffer.data();
    Surroundings found{file.left(Signature), {}};
    bool behind = false;
    for (qsizetype at = Signature; at + Head + Sum <= file.size();) {
        const qsizetype size = Head + qsizetype(numberAt(file, at)) + Sum;
        const bool isPixels = file.mid(at + 4, 4) == "IDAT";
        if (!isPixels)
            (behind ? found.behind : found.before) += file.mid(at, size);
        behind |= isPixels;
        at += size;
    }
    return behind ? std::optional(found) : std::nullopt;
}

// Puts the size into the first chunk. False if that tells of other pixels than ours.
bool setHeader(QByteArray &before, const QSize &size, PngPixels pixels)
{
    constexpr int Type = 12, Header = 16, Sum = 29;
    auto *const bytes = reinterpret_cast<unsigned char *>(before.data());
    if (before.size() < Sum + 4 || bytes[Header + 8] != 8 ||
        bytes[Header + 9] != static_cast<unsigned char>(pixels.colour))
        return false;
    putNumber(bytes + Header, static_cast<std::uint32_t>(size.width()));
    putNumber(bytes + Header + 4, static_cast<std::uint32_t>(size.height()));
    putNumber(bytes + Sum, libdeflate_crc32(0, bytes + Type, Sum - Type));
    return true;
}

bool writeParts(QIODevice &device, const QImage &image, Progress &progress, int threads)
{
    PngPixels pixels;
    if (image.isNull() || !PngPixels::of(image, &pixels))
        return false;
    std::optional<Surroundings> around = surroundingsOf(image);
    return around && setHeader(around->before, image.size(), pixels) &&
           device.write(around->before) == around->before.size() &&
           PngPixelWriter(device, image, pixels, threads).write(progress) &&
           device.write(around->behind) == around->behind.size();
}

} // namespace

bool hasPngRows(const QImage &image)
{
    PngPixels pixels;
    // Without its colours a picture of numbers is none of a palette.
    return !image.isNull() && PngPixels::of(image, &pixels) &&
           (image.format() == QImage::Format_Indexed8) == (image.colorCount() > 0);
}

bool writePng(QIODevice &device, const QImage &image, Progress &progress)
{
    const auto cores = static_cast<int>(std::thread::hardware_concurrency());
    return writePng(device, image, progress, cores);
}

bool writePng(QIODevice &device, const QImage &image, Progress &progress, int threads)
{
    try {
        return writeParts(device, image, progress, threads);
    } catch (const std::bad_alloc &) {
        return false;
    }
}
