#include "importers/sdtsconversion.h"
#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"
#include "support/sdtstransfer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

// A hill in meters; the transfers of the common map sheets have this shape.
int hill(int column, int row) { return (column * 7 + row * 13) % 3000; }

// Both passes over a transfer on disk, its text written to a device that drops it.
void importTransfer(benchmark::State &state)
{
    const QTemporaryDir folder;
    const int columns = static_cast<int>(state.range(0));
    const int rows = static_cast<int>(state.range(1));
    for (const auto &[name, bytes] : sdts::transfer(columns, rows, hill)) {
        QFile file(folder.filePath(QString::fromStdString(name)));
        if (!file.open(QIODevice::WriteOnly))
            return state.SkipWithError("cannot write");
        file.write(bytes.data(), qint64(bytes.size()));
    }
    std::ofstream nowhere("/dev/null");
    std::streambuf *const former = std::cout.rdbuf(nowhere.rdbuf());
    for (auto _ : state) {
        SdtsConversion conversion;
        conversion.readCATDFile(folder.filePath("TR01CATD.DDF"));
        NoProgress unwatched;
        const Result<ElevationImage> image = conversion.readCells(1.0, unwatched);
        if (!image)
            state.SkipWithError("no image");
        benchmark::DoNotOptimize(image->constBits());
    }
    std::cout.rdbuf(former);
    state.SetItemsProcessed(state.iterations() * columns * rows);
}

// A record whose fields are none of those that are described, as many as them.
void skipUnknownTags(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    std::istringstream in(isofile::manyFields(count, 'K', 'L') +
                          isofile::manyFields(count, 'U'));
    sio_8211Reader reader(in);
    sio_8211ForwardIterator i(reader);
    sc_Record record;
    for (auto _ : state)
        if (!i.get(record) || !record.empty())
            state.SkipWithError("the tags are known");
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

BENCHMARK(skipUnknownTags)->Arg(70)->Arg(700)->Arg(7000)->Unit(benchmark::kMicrosecond);
BENCHMARK(importTransfer)
    ->Args({350, 460})
    ->Args({1200, 1400})
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
