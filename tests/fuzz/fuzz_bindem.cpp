#include "importers/bindemconversion.h"
#include "raster/elevationimage.h"

#include <QBuffer>

#include <cstdint>

namespace {

class Answers : public BinDemQuestions {
public:
    bool proceedWithoutKeyword() override { return true; }
};

} // namespace

// The header's lines, a zero byte, and the raster.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype zero = bytes.indexOf('\0');
    QByteArray lines = zero < 0 ? bytes : bytes.left(zero);
    QByteArray raster = zero < 0 ? QByteArray() : bytes.mid(zero + 1);
    QBuffer headerFile(&lines);
    QBuffer in(&raster);
    if (!headerFile.open(QIODevice::ReadOnly) || !in.open(QIODevice::ReadOnly))
        return 0;
    BinDemHeader header;
    header.readEntries(headerFile);
    (void)header.faults();
    BinDemOptions options;
    options.upperLeftX = snappedCoordinate(header.upperLeftX);
    options.upperLeftY = snappedCoordinate(header.upperLeftY);
    options.extentX = snappedCoordinate(header.extentX());
    options.extentY = snappedCoordinate(header.extentY());
    (void)binDemKilobytes(header, options);
    if (options.extentX / header.pixelWidth * (options.extentY / header.pixelHeight) >
        1e6)
        return 0; // more than a fuzzer can fill many times a second
    Answers answers;
    NoProgress unwatched;
    (void)convertBinDem(in, header, options, answers, unwatched);
    return 0;
}
