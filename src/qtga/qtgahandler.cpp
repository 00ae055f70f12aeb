#include "qtga/qtgahandler.h"

#include <QIODevice>
#include <QImage>
#include <QSize>
#include <QVariant>
#include <QtEndian>

#include <array>
#include <cstdio>
#include <memory>
#include <new>

namespace {

constexpr int HeadSize = 18;
constexpr quint8 TrueColour = 2;
constexpr quint8 RightToLeft = 0x10; // bits of the image descriptor
constexpr quint8 TopToBottom = 0x20;

constexpr char NoLineToWrite[] =
    "QTgaHandler::write(): Cannot allocate memory for a line of TGA data";

using Head = std::array<uchar, HeadSize>;

int widthOf(const Head &head) { return qFromLittleEndian<quint16>(&head[12]); }
int heightOf(const Head &head) { return qFromLittleEndian<quint16>(&head[14]); }

bool isUncompressedRgb(const Head &head) { return head[1] == 0 && head[2] == TrueColour; }

Head headFor(const QImage &image)
{
    Head head{};
    head[2] = TrueColour;
    qToLittleEndian(static_cast<quint16>(image.width()), &head[12]);
    qToLittleEndian(static_cast<quint16>(image.height()), &head[14]);
    head[16] = 24;
    head[17] = TopToBottom;
    return head;
}

bool readFully(QIODevice &device, uchar *buffer, qint64 size)
{
    return device.read(reinterpret_cast<char *>(buffer), size) == size;
}

bool writeFully(QIODevice &device, const uchar *buffer, qint64 size)
{
    return device.write(reinterpret_cast<const char *>(buffer), size) == size;
}

// Buffers grow with what a file claims, so a failure must come back as null.
std::unique_ptr<uchar[]> lineBuffer(qsizetype size, const char *complaint)
{
    std::unique_ptr<uchar[]> line(new (std::nothrow) uchar[size_t(size)]);
    if (!line)
        qWarning("%s", complaint);
    return line;
}

// Whether a picture of this size can be in the file. A head may claim gigabytes that
// neither the file nor the memory has; a depth below 8 even claims no bytes for them.
bool holdsPicture(const QIODevice &device, qint64 lineLength, int width, int height)
{
    constexpr qint64 MostPixelsOfNothing = 1 << 24;
    if (lineLength == 0)
        return qint64(width) * height <= MostPixelsOfNothing;
    return device.isSequential() || device.size() - device.pos() >= lineLength * height;
}

// One line of blue, green, red triples; `length` bytes may be fewer than three a
// pixel, when the file claims a smaller depth: what is missing reads as black.
void decodeLine(const uchar *line, qsizetype length, bool mirrored, QRgb *out, int width)
{
    const auto texel = [line, length](int i) -> QRgb {
        const qsizetype at = qsizetype(i) * 3;
        return at + 3 <= length ? qRgb(line[at + 2], line[at + 1], line[at])
                                : 0xFF000000u;
    };
    for (int x = 0; x < width; ++x)
        out[x] = texel(mirrored ? width - 1 - x : x);
}

} // namespace

bool QTgaHandler::canRead() const
{
    if (!device()) {
        qWarning("QTgaHandler::canRead() called with no device");
        return false;
    }
    if (!canRead(device()))
        return false;
    setFormat("tga");
    return true;
}

bool QTgaHandler::canRead(const QIODevice *device)
{
    if (!device) {
        qWarning("QTgaHandler::canRead() called with no device");
        return false;
    }
    return device->isReadable();
}

bool QTgaHandler::read(QImage *image)
{
    if (!device()) {
        qWarning("QTgaHandler::read() called with no device");
        return false;
    }
    if (!canRead())
        return false;
    Head head{};
    if (!readFully(*device(), head.data(), HeadSize)) {
        qWarning("QTgaHandler::read(): Cannot read TGAFILEHEADER");
        return false;
    }
    if (!isUncompressedRgb(head)) {
        qWarning("QTgaHandler::read(): TGA file is not uncompressed RGB");
        return false;
    }
    const int width = widthOf(head);
    const int height = heightOf(head);
    const qsizetype length = qsizetype(width) * (head[16] >> 3);
    if (!holdsPicture(*device(), length, width, height)) {
        std::fputs("QTgaHandler::read(): Cannot read from file\n", stderr);
        return false;
    }
    const auto line = lineBuffer(
        length, "QTgaHandler::read(): Cannot allocate memory for a line of TGA data");
    QImage result(width, height, QImage::Format_RGB32);
    if (!line || result.isNull())
        return false;

    const bool fromTop = head[17] & TopToBottom;
    for (int i = 0; i < height; ++i) {
        if (!readFully(*device(), line.get(), length)) {
            std::fputs("QTgaHandler::read(): Cannot read from file\n", stderr);
            return false;
        }
        const int row = fromTop ? i : height - 1 - i;
        decodeLine(line.get(), length, head[17] & RightToLeft,
                   reinterpret_cast<QRgb *>(result.scanLine(row)), width);
    }
    *image = result;
    return true;
}

bool QTgaHandler::write(const QImage &image)
{
    if (!device()) {
        qWarning("QTgaHandler::write() called with no device");
        return false;
    }
    if (!device()->isWritable())
        return false;
    const Head head = headFor(image);
    if (!writeFully(*device(), head.data(), HeadSize)) {
        qWarning("QTgaHandler::write(): Cannot write TGAFILEHEADER");
        return false;
    }
    const qsizetype length = qsizetype(image.width()) * 3;
    const auto line = lineBuffer(length, NoLineToWrite);
    if (!line)
        return false;
    // ARGB32 holds what QImage::pixel gives for every format. Converted line by line,
    // lest the whole picture be held twice.
    const bool direct =
        image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32;
    for (int y = 0; y < image.height(); ++y) {
        QImage converted;
        if (!direct)
            converted =
                image.copy(0, y, image.width(), 1).convertToFormat(QImage::Format_ARGB32);
        if (!direct && converted.isNull()) {
            qWarning(NoLineToWrite);
            return false;
        }
        const auto *pixels = reinterpret_cast<const QRgb *>(
            direct ? image.constScanLine(y) : converted.constScanLine(0));
        for (int x = 0; x < image.width(); ++x) {
            uchar *const out = line.get() + qsizetype(x) * 3;
            out[0] = static_cast<uchar>(qBlue(pixels[x]));
            out[1] = static_cast<uchar>(qGreen(pixels[x]));
            out[2] = static_cast<uchar>(qRed(pixels[x]));
        }
        if (!writeFully(*device(), line.get(), length)) {
            std::fputs("QTgaHandler::write(): Cannot write to file\n", stderr);
            return false;
        }
    }
    return true;
}

QByteArray QTgaHandler::name() const { return "tga"; }

QVariant QTgaHandler::option(ImageOption option) const
{
    switch (option) {
    case Size:
        return QSize(400, 300);
    case CompressionRatio:
        return compression;
    default:
        return {};
    }
}

void QTgaHandler::setOption(ImageOption option, const QVariant &value)
{
    if (option == CompressionRatio && value.canConvert<int>())
        compression = value.toInt();
}

bool QTgaHandler::supportsOption(ImageOption option) const
{
    return option == Size || option == CompressionRatio;
}
