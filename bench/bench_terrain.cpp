// A file of heights as a scenery, and as much of it as GDAL's own programs do: warped
// into metres, shaded, coloured by height, as PNG. Times of the clock and of all cores,
// seconds; the largest memory so far, megabytes.
#include "base/workerpool.h"
#include "geodata/geodata.h"
#include "geodata/geofile.h"
#include "terrain/rowwork.h"
#include "terrain/shading.h"
#include "terrain/writeterrain.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

NoProgress unwatched;

const QTemporaryDir &folder()
{
    static const QTemporaryDir made;
    return made;
}

// 4096 x 4096 heights by longitude and latitude.
QString terrainFile()
{
    static const QString written = [] {
        GeoFile file;
        file.name = folder().filePath(QStringLiteral("dem.tif"));
        file.size = {4096, 4096};
        file.crs = QStringLiteral("EPSG:4326");
        file.transform = {14.0, 1.0 / 3600.0, 0.0, 47.0, 0.0, -1.0 / 3600.0};
        file.height = [](int x, int y) { return hills(x, y) + (x * 7 + y * 13) % 5; };
        return write(file) ? file.name : QString();
    }();
    return written;
}

double seconds(int who)
{
    rusage used{};
    getrusage(who, &used);
    const auto of = [](const timeval &t) { return double(t.tv_sec) + t.tv_usec * 1e-6; };
    return of(used.ru_utime) + of(used.ru_stime);
}

void tellUse(benchmark::State &state, int who, double before)
{
    rusage used{};
    getrusage(who, &used);
    state.counters["cores"] =
        benchmark::Counter((seconds(who) - before) / double(state.iterations()));
    state.counters["megabytes"] = double(used.ru_maxrss) / 1024.0;
}

void openTerrain(benchmark::State &state, BakedLight light)
{
    TerrainRequest request;
    request.files = QStringList{terrainFile()};
    request.out = folder().filePath(QStringLiteral("scenery"));
    request.texture.light = light;
    const double before = seconds(RUSAGE_SELF);
    for (auto _ : state) {
        const auto source = makeGeodata();
        if (!writeTerrain(*source, request, unwatched))
            state.SkipWithError("The terrain was not written.");
    }
    tellUse(state, RUSAGE_SELF, before);
}

bool runs(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder().path());
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitCode() == 0;
}

// What no program of GDAL is there for is told, not measured.
void gdalPrograms(benchmark::State &state)
{
    if (QStandardPaths::findExecutable(QStringLiteral("gdaldem")).isEmpty())
        return state.SkipWithError("There are no programs of GDAL.");
    QFile colours(folder().filePath(QStringLiteral("colours.txt")));
    if (!colours.open(QIODevice::WriteOnly) ||
        colours.write("0% 60 120 60\n50% 200 180 120\n100% white\n") < 0)
        return state.SkipWithError("The colours were not written.");
    colours.close();
    const double before = seconds(RUSAGE_CHILDREN);
    for (auto _ : state) {
        const bool done =
            runs("gdalwarp", {"-q", "-overwrite", "-t_srs", "EPSG:32633", "-r", "cubic",
                              terrainFile(), "warped.tif"}) &&
            runs("gdaldem", {"hillshade", "-q", "-of", "PNG", "warped.tif", "s.png"}) &&
            runs("gdaldem", {"color-relief", "-q", "-of", "PNG", "warped.tif",
                             "colours.txt", "c.png"});
        if (!done)
            state.SkipWithError("A program of GDAL failed.");
    }
    tellUse(state, RUSAGE_CHILDREN, before);
}

// Light alone.
void light(benchmark::State &state, BakedLight baked)
{
    Heights heights;
    heights.size = {4096, 4096};
    for (int y = 0; y < 4096; ++y)
        for (int x = 0; x < 4096; ++x)
            heights.metres.push_back(static_cast<float>(hills(x, y)));
    TextureRequest request;
    request.light = baked;
    WorkerPool pool(usualThreads());
    const double before = seconds(RUSAGE_SELF);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            bakeLight({heights, 30.0, 30.0}, request, pool, Stretch{unwatched}));
    tellUse(state, RUSAGE_SELF, before);
}

} // namespace

#define TERRAIN_BENCHMARK(...)                                                           \
    BENCHMARK_CAPTURE(__VA_ARGS__)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1)

TERRAIN_BENCHMARK(openTerrain, unshaded, BakedLight::None);
BENCHMARK(gdalPrograms)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1);
TERRAIN_BENCHMARK(openTerrain, sun, BakedLight::Sun);
TERRAIN_BENCHMARK(openTerrain, sky, BakedLight::Sky);
TERRAIN_BENCHMARK(light, sun, BakedLight::Sun);
TERRAIN_BENCHMARK(light, shadow, BakedLight::Shadow);
TERRAIN_BENCHMARK(light, sky, BakedLight::Sky);
BENCHMARK_MAIN();
