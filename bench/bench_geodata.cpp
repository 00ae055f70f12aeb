// Terrain read by this program beside the same done by GDAL's own functions. Files of
// 4096 x 4096 and of 10,000 x 10,000 are written once, into a folder that goes away.
#include "geodata/geodata.h"
#include "geodata/geofile.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

GeoFile withName(const QString &name)
{
    static const QTemporaryDir folder;
    GeoFile file;
    file.name = folder.filePath(name);
    file.size = {4096, 4096};
    file.height = [](int x, int y) { return hills(x, y) + (x * 7 + y * 13) % 5; };
    return file;
}

GeoFile projected() { return withName(QStringLiteral("projected.tif")); }

GeoFile geographic()
{
    GeoFile file = withName(QStringLiteral("geographic.tif"));
    file.crs = QStringLiteral("EPSG:4326");
    file.transform = {14.0, 1.0 / 3600.0, 0.0, 47.0, 0.0, -1.0 / 3600.0};
    file.type = GDT_Int16;
    file.noData = -32768.0;
    file.options = QStringList{"COMPRESS=LZW", "TILED=YES"};
    return file;
}

GeoFile large(bool hasOverviews)
{
    GeoFile file = withName(hasOverviews ? QStringLiteral("overviews.tif")
                                         : QStringLiteral("large.tif"));
    file.size = {10000, 10000};
    file.type = GDT_Int16;
    file.noData = -32768.0;
    file.options = QStringList{"COMPRESS=LZW", "TILED=YES"};
    return file;
}

GeoFile largePlain() { return large(false); }

// As most programs write it: rows one behind the other.
GeoFile largeStrips()
{
    GeoFile file = withName(QStringLiteral("strips.tif"));
    file.size = {10000, 10000};
    file.type = GDT_Int16;
    file.noData = -32768.0;
    return file;
}

GeoFile largeWithOverviews() { return large(true); }

// The file, written where that has not been done.
QString ready(const GeoFile &file)
{
    if (QFile::exists(file.name))
        return file.name;
    if (!write(file))
        return {};
    if (file.name.contains(QLatin1String("overviews"))) {
        std::array levels{2, 4, 8, 16};
        const Dataset made(GDALOpenEx(file.name.toUtf8().constData(),
                                      GDAL_OF_RASTER | GDAL_OF_UPDATE, nullptr, nullptr,
                                      nullptr));
        if (GDALBuildOverviews(made.get(), "AVERAGE", int(levels.size()), levels.data(),
                               0, nullptr, nullptr, nullptr) != CE_None)
            return {};
    }
    return file.name;
}

using MakeFile = GeoFile (*)();

std::unique_ptr<Terrain> opened(const QString &name)
{
    NoProgress progress;
    auto terrain = makeGeodata()->open({name}, {}, progress);
    return terrain ? std::move(*terrain) : nullptr;
}

// From the name of a file to its heights on the grid of the default request.
void heights(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    NoProgress progress;
    for (auto _ : state) {
        const auto terrain = opened(name);
        const auto grid = terrain->plan({});
        const auto cells = terrain->heights(*grid, progress);
        if (!cells)
            return state.SkipWithError("no heights");
        benchmark::DoNotOptimize(cells->metres.data());
    }
}

void heightsByGdal(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    const auto grid = opened(name)->plan({});
    for (auto _ : state) {
        const Heights cells = judgedByWarp({name}, argumentsFor(*grid));
        benchmark::DoNotOptimize(cells.metres.data());
    }
}

void overview(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    for (auto _ : state) {
        const auto seen = opened(name)->overview(
            {1000, 1000}, [](const Heights &, int, int) { return true; });
        benchmark::DoNotOptimize(seen->metres.data());
    }
}

// From the file's name to the first rows of its map.
void firstRows(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    for (auto _ : state) {
        bool hasRows = false;
        const auto seen =
            opened(name)->overview({1000, 1000}, [&](const Heights &, int, int until) {
                hasRows = until > 0;
                return !hasRows;
            });
        benchmark::DoNotOptimize(seen.has_value());
        if (!hasRows)
            state.SkipWithError("There were no rows.");
    }
}

void overviewByGdal(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    for (auto _ : state) {
        const Heights cells = judgedByTranslate(name, {"-outsize", "1000", "0"});
        benchmark::DoNotOptimize(cells.metres.data());
    }
}

void scan(benchmark::State &state, MakeFile make)
{
    const QString name = ready(make());
    NoProgress progress;
    for (auto _ : state) {
        const auto found = opened(name)->scan(progress);
        benchmark::DoNotOptimize(found->voids);
    }
}

// Holes of some cells in every thirtieth part of a terrain.
void fill(benchmark::State &state)
{
    Heights heights{{4096, 4096}, std::vector<float>(std::size_t(4096) * 4096)};
    for (int y = 0; y < 4096; ++y)
        for (int x = 0; x < 4096; ++x)
            heights.row(y)[x] = x % 150 < 9 && y % 170 < 11
                                    ? std::numeric_limits<float>::quiet_NaN()
                                    : static_cast<float>(hills(x, y));
    NoProgress progress;
    for (auto _ : state) {
        Heights filled = heights;
        const auto count = makeGeodata()->fillHoles(filled, 100.0, progress);
        benchmark::DoNotOptimize(*count);
    }
}

} // namespace

#define PAIR(name, file)                                                                 \
    BENCHMARK_CAPTURE(name, file, file)->Unit(benchmark::kMillisecond)->UseRealTime();   \
    BENCHMARK_CAPTURE(name##ByGdal, file, file)                                          \
        ->Unit(benchmark::kMillisecond)                                                  \
        ->UseRealTime()

PAIR(heights, projected);
PAIR(heights, geographic);
PAIR(overview, largePlain);
PAIR(overview, largeWithOverviews);
BENCHMARK_CAPTURE(firstRows, largePlain, largePlain)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(firstRows, largeStrips, largeStrips)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(scan, projected, projected)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(scan, largePlain, largePlain)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(fill)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
