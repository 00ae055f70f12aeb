// Points of text as terrain: a grid, and scattered ones; a million of each unless told.
#include "terrain/meshraster.h"
#include "terrain/points.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

#include <limits>
#include <random>

namespace {

NoProgress unwatched;
constexpr int Columns = 1000;

QByteArray gridText(std::int64_t points)
{
    QByteArray text;
    text.reserve(points * 28);
    for (std::int64_t i = 0; i < points; ++i)
        text += QByteArray::number(432100 + 10 * (i % Columns)) + ".25 " +
                QByteArray::number(5812000 - 10 * (i / Columns)) + ".75 " +
                QByteArray::number(double(i % 977) * 0.37, 'f', 2) + '\n';
    return text;
}

std::vector<GroundPoint> scatteredPoints(std::int64_t count)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0.0, 10000.0);
    std::vector<GroundPoint> points;
    for (std::int64_t i = 0; i < count; ++i)
        points.push_back({place(random), place(random), place(random) / 100});
    return points;
}

QByteArray scatteredText(std::int64_t count)
{
    QByteArray text;
    for (const GroundPoint &point : scatteredPoints(count))
        text += QByteArray::number(point.x, 'f', 3) + ',' +
                QByteArray::number(point.y, 'f', 3) + ',' +
                QByteArray::number(point.z, 'f', 2) + '\n';
    return text;
}

void readText(benchmark::State &state, const QByteArray &text)
{
    const OpenText open = [&text](const QString &) -> Result<std::unique_ptr<QIODevice>> {
        auto device = std::make_unique<QBuffer>();
        device->setData(text);
        (void)device->open(QIODevice::ReadOnly);
        return device;
    };
    for (auto _ : state)
        benchmark::DoNotOptimize(
            readPointFiles({QStringLiteral("p")}, {}, unwatched, open));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * text.size());
}

void grid(benchmark::State &state) { readText(state, gridText(state.range(0))); }
void scattered(benchmark::State &state)
{
    readText(state, scatteredText(state.range(0)));
}

void triangles(benchmark::State &state)
{
    const auto points = scatteredPoints(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            triangulated(points, {}, QStringLiteral("p"), unwatched));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void fill(benchmark::State &state)
{
    const auto mesh =
        triangulated(scatteredPoints(state.range(0)), {}, QStringLiteral("p"), unwatched);
    const SurfaceGrid cells = proposedGrid(*mesh, MostProposedCells);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            rasterized(*mesh, cells, std::numeric_limits<double>::infinity(), unwatched));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(grid)->Arg(1000000)->Arg(4000000)->Unit(benchmark::kMillisecond);
BENCHMARK(scattered)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(triangles)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(fill)->Arg(1000000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
