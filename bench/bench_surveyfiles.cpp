#include "importers/bindemconversion.h"
#include "importers/usgsdemimport.h"
#include "raster/elevationimage.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

class NoQuestions : public BinDemQuestions, public UsgsDemQuestions {
public:
    bool proceedWithoutKeyword() override { return true; }
    bool confirmHeader(UsgsDemData &) override { return true; }
    bool continueChecking(const SuspiciousElevation &) override { return true; }
};

void writeFile(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

// A whole tile of the global 30 arc-second set.
void convertTile(benchmark::State &state)
{
    const int bits = int(state.range(0));
    BinDemHeader header;
    header.numberOfColumns = 4800;
    header.numberOfRows = 6000;
    header.bitsPerPixel = bits;
    header.byteOrder = "M";
    header.noDataValue = -9999.0;
    header.upperLeftX = 0.0;
    header.upperLeftY = 5999.0;
    header.pixelWidth = header.pixelHeight = 1.0;
    BinDemOptions options;
    options.upperLeftY = header.upperLeftY;
    options.extentX = header.numberOfColumns;
    options.extentY = header.numberOfRows;

    const QTemporaryDir dir;
    QByteArray bytes(qsizetype(4800) * 6000 * (bits / 8), '\0');
    quint32 seed = 1;
    for (char &byte : bytes) {
        seed = seed * 1664525u + 1013904223u;
        byte = char(seed >> 27); // small numbers
    }
    writeFile(dir.filePath("a.dem"), bytes);
    NoQuestions questions;
    for (auto _ : state) {
        QFile file(dir.filePath("a.dem"));
        NoProgress unwatched;
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            state.SkipWithError("not opened");
        benchmark::DoNotOptimize(
            convertBinDem(file, header, options, questions, unwatched));
    }
}
BENCHMARK(convertTile)->Arg(8)->Arg(16)->Arg(32)->Unit(benchmark::kMillisecond);

// A one-degree block: 1201 profiles of 1201 samples.
void importBlock(benchmark::State &state)
{
    constexpr int Side = 1201;
    const auto integer = [](int value, int width) {
        return QByteArray::number(value).rightJustified(width);
    };
    const auto real = [](double value, int width) {
        return QByteArray::number(value, 'E', 6).rightJustified(width);
    };
    QByteArray bytes =
        QByteArray(528, ' ') + integer(3, 6) + integer(2, 6) + integer(4, 6);
    for (const int corner : {0, 0, 0, 3600, 3600, 3600, 3600, 0})
        bytes += real(corner, 24);
    bytes += QByteArray(78, ' ') + real(3, 12) + real(3, 12) + real(1, 12) +
             integer(1, 6) + integer(Side, 6);
    bytes = bytes.leftJustified(1024);
    for (int p = 0; p < Side; ++p) {
        bytes += integer(1, 6) + integer(p + 1, 6) + integer(Side, 6) + integer(1, 6);
        bytes +=
            real(3.0 * p, 24) + real(0, 24) + QByteArray(" 0 0 0").rightJustified(72);
        for (int k = 0; k < Side; ++k)
            bytes += integer(1000 + (p * k) % 300, 6);
        bytes = bytes.leftJustified((bytes.size() + 1023) / 1024 * 1024);
    }
    const QTemporaryDir dir;
    writeFile(dir.filePath("a.dem"), bytes);
    NoQuestions listener;
    for (auto _ : state) {
        NoProgress unwatched;
        const Result<ElevationImage> image =
            UsgsDemImport(-9999, listener).run({dir.filePath("a.dem")}, unwatched);
        if (!image || image->size() != QSize(Side - 1, Side - 1))
            state.SkipWithError("not imported");
        benchmark::DoNotOptimize(image);
    }
}
BENCHMARK(importBlock)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
