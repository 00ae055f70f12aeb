#include "raster/picturecheck.h"

#include <QFile>
#include <QFileInfo>

#include <libdeflate.h>

#include <algorithm>
#include <cctype>
#include <optional>

namespace {

unsigned int byteAt(const QByteArray &bytes, int at)
{
    return static_cast<uchar>(bytes[at]);
}

unsigned int bigEndian(const QByteArray &bytes, int at, int count)
{
    unsigned int number = 0;
    for (int i = 0; i < count; ++i)
        number = number << 8 | byteAt(bytes, at + i);
    return number;
}

QSize sizeOf(unsigned int width, unsigned int height)
{
    constexpr unsigned int Most = 1u << 30;
    return width > Most || height > Most
               ? QSize()
               : QSize(static_cast<int>(width), static_cast<int>(height));
}

qint64 pixelsOf(const QSize &size) { return qint64(size.width()) * size.height(); }

// --- PNG -------------------------------------------------------------------------

struct Chunk {
    QByteArray type;
    QByteArray beginning; // of its contents
};

// Reads a chunk: its length, its type and contents, and their checksum. No value where
// one of them is wrong or missing.
std::optional<Chunk> readChunk(QIODevice &file)
{
    constexpr qint64 Head = 8, Tail = 4, Block = 1 << 16;
    const QByteArray head = file.read(Head);
    if (head.size() != Head)
        return {};
    Chunk chunk{head.mid(4), {}};
    quint32 sum = libdeflate_crc32(0, chunk.type.constData(), 4);
    for (qint64 left = bigEndian(head, 0, 4); left > 0;) {
        const QByteArray block = file.read(std::min(left, Block));
        if (block.isEmpty())
            return {};
        if (chunk.beginning.isEmpty())
            chunk.beginning = block.left(16);
        sum = libdeflate_crc32(sum, block.constData(), size_t(block.size()));
        left -= block.size();
    }
    const QByteArray tail = file.read(Tail);
    return tail.size() == Tail && bigEndian(tail, 0, 4) == sum ? std::optional(chunk)
                                                               : std::nullopt;
}

bool isWholePng(QIODevice &file, const QSize &size)
{
    if (file.read(8) != QByteArray("\x89PNG\r\n\x1A\n", 8))
        return false;
    const auto header = readChunk(file);
    if (!header || header->type != "IHDR" || header->beginning.size() < 8 ||
        sizeOf(bigEndian(header->beginning, 0, 4), bigEndian(header->beginning, 4, 4)) !=
            size)
        return false;
    bool hasPixels = false;
    for (auto chunk = readChunk(file); chunk; chunk = readChunk(file)) {
        hasPixels |= chunk->type == "IDAT";
        if (chunk->type == "IEND")
            return hasPixels && file.atEnd();
    }
    return false;
}

// --- JPEG ------------------------------------------------------------------------

bool beginsFrame(unsigned int marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 &&
           marker != 0xCC;
}

// The size that the head of the frame tells.
QSize sizeInJpeg(QIODevice &file)
{
    constexpr unsigned int Scan = 0xDA;
    for (QByteArray head = file.read(4); head.size() == 4; head = file.read(4)) {
        const unsigned int marker = byteAt(head, 1);
        const unsigned int length = bigEndian(head, 2, 2);
        if (byteAt(head, 0) != 0xFF || length < 2 || marker == Scan)
            return {};
        const QByteArray segment = file.read(length - 2);
        if (beginsFrame(marker))
            return segment.size() < 5
                       ? QSize()
                       : sizeOf(bigEndian(segment, 3, 2), bigEndian(segment, 1, 2));
    }
    return {};
}

bool isWholeJpeg(QIODevice &file, const QSize &size)
{
    return file.read(2) == "\xFF\xD8" && sizeInJpeg(file) == size &&
           file.seek(file.size() - 2) && file.read(2) == "\xFF\xD9";
}

// --- TGA and PPM -----------------------------------------------------------------

bool isWholeTga(QIODevice &file, const QSize &size)
{
    constexpr qint64 Head = 18;
    const QByteArray head = file.read(Head);
    if (head.size() != Head || head[1] != 0 || head[2] != 2)
        return false;
    const auto number = [&head](int at) {
        return byteAt(head, at) | byteAt(head, at + 1) << 8;
    };
    return sizeOf(number(12), number(14)) == size &&
           file.size() >= Head + pixelsOf(size) * (byteAt(head, 16) >> 3);
}

constexpr qint64 LongestComment = 1 << 16;

// The next number of the head; a comment goes to the end of its line.
int numberInPpm(QIODevice &file)
{
    char c = 0;
    while (file.getChar(&c) && (c == '#' || std::isspace(static_cast<uchar>(c))))
        if (c == '#')
            file.readLine(LongestComment);
    int number = 0;
    for (int digits = 0; c >= '0' && c <= '9' && digits < 9; ++digits) {
        number = number * 10 + (c - '0');
        if (!file.getChar(&c))
            break;
    }
    return number;
}

bool isWholePpm(QIODevice &file, const QSize &size)
{
    if (file.read(2) != "P6")
        return false;
    const int width = numberInPpm(file);
    const int height = numberInPpm(file);
    const int highest = numberInPpm(file); // one blank behind it has been read, too
    return QSize(width, height) == size && highest == 255 &&
           file.size() - file.pos() == pixelsOf(size) * 3;
}

} // namespace

bool isWholePicture(QIODevice &file, const QString &format, const QSize &size)
{
    if (format == QLatin1String("png"))
        return isWholePng(file, size);
    if (format == QLatin1String("jpg"))
        return isWholeJpeg(file, size);
    if (format == QLatin1String("tga"))
        return isWholeTga(file, size);
    return format == QLatin1String("ppm") && isWholePpm(file, size);
}

bool isWholePicture(const QString &name, const QSize &size)
{
    QFile file(name);
    return QFileInfo(name).isFile() && file.open(QIODevice::ReadOnly) &&
           isWholePicture(file, QFileInfo(name).suffix().toLower(), size);
}
