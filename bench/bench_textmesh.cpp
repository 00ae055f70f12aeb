// Scan and conversion of a regular text mesh; a million lines unless told.
#include "importers/asciiregular.h"
#include "raster/elevationimage.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

namespace {

constexpr int Columns = 1000;

QByteArray meshText(std::int64_t lines)
{
    QByteArray text;
    text.reserve(lines * 24);
    for (std::int64_t i = 0; i < lines; ++i)
        text += QByteArray::number(432100 + i % Columns) + ".25 " +
                QByteArray::number(5812000 + i / Columns) + ' ' +
                QByteArray::number(double(i % 977) * 0.37, 'f', 2) + '\n';
    return text;
}

NoProgress unwatched;

void scan(benchmark::State &state)
{
    QByteArray text = meshText(state.range(0));
    QBuffer in(&text);
    in.open(QIODevice::ReadOnly);
    for (auto _ : state) {
        in.seek(0);
        MeshBoundaries boundaries;
        benchmark::DoNotOptimize(scanTextMesh(in, 0, boundaries, unwatched));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void convert(benchmark::State &state)
{
    QByteArray text = meshText(state.range(0));
    QBuffer in(&text);
    in.open(QIODevice::ReadOnly);
    AsciiRegularOptions options;
    (void)scanTextMesh(in, 0, options.boundaries, unwatched);
    options.width = Columns;
    options.height = static_cast<int>(state.range(0) / Columns);
    for (auto _ : state) {
        in.seek(0);
        benchmark::DoNotOptimize(convertAsciiRegular(in, options, unwatched));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(scan)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
