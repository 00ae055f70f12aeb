// Frames of two views, and the innermost reads and fills by themselves.

#include "bench/frame.h"

#include "raster/elevationcolumns.h"
#include "raster/texturesampler.h"
#include "render/plain/terrainsweep.h"
#include "render/plain/transformation.h"
#include "render/screentrigon.h"

#include <benchmark/benchmark.h>

#include <numeric>
#include <vector>

namespace {

using PlainFrame = Frame<plain::TerrainSweep, plain::Transformation>;

void draw(benchmark::State &state, const View &view)
{
    FastFrame frame(view, int(state.range(0)));
    frame.setup.threads = int(state.range(1));
    frame.setup.seenWholeOnly = state.range(2) != 0;
    for (auto _ : state)
        frame.draw();
}

void drawPlain(benchmark::State &state, const View &view)
{
    PlainFrame frame(view, int(state.range(0)));
    for (auto _ : state)
        frame.draw();
}

BENCHMARK_CAPTURE(drawPlain, flight, Flight)
    ->ArgName("quality")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawPlain, overview, Overview)
    ->ArgName("quality")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, flight, Flight)
    ->ArgNames({"quality", "threads", "whole"})
    ->ArgsProduct({{0, 1}, {1, 2}, {0, 1}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, overview, Overview)
    ->ArgNames({"quality", "threads", "whole"})
    ->ArgsProduct({{0, 1}, {1, 2}, {0, 1}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// A preview: half the size, a quarter of the mesh.
void preview(benchmark::State &state)
{
    FastFrame frame(Flight, 0, 640, 480, 256);
    frame.setup.threads = int(state.range(0));
    frame.setup.seenWholeOnly = true;
    for (auto _ : state)
        frame.draw();
}
BENCHMARK(preview)->ArgName("threads")->Arg(1)->Arg(2)->UseRealTime()->Unit(
    benchmark::kMillisecond);

void readElevations(benchmark::State &state)
{
    std::vector<double> x(1000), z(1000);
    std::iota(x.begin(), x.end(), 10.25);
    double y = 1.5;
    for (auto _ : state) {
        for (std::size_t k = 0; k < x.size(); ++k)
            z[k] = inputs().elevation.elevation(x[k], y);
        benchmark::DoNotOptimize(z.data());
        y = y < 1000.0 ? y + 1.0 : 1.5;
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(readElevations);

void readElevationColumns(benchmark::State &state)
{
    std::vector<double> x(1000), z(1000);
    std::iota(x.begin(), x.end(), 10.25);
    const ElevationColumns columns(inputs().elevation, x);
    double y = 1.5;
    for (auto _ : state) {
        columns.read(y, 0, 1000, z.data());
        benchmark::DoNotOptimize(z.data());
        y = y < 1000.0 ? y + 1.0 : 1.5;
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(readElevationColumns);

// Five points around positions that move along a slanting line.
template <typename Read> void readTexture(benchmark::State &state, const Read &read)
{
    const TextureImage texture = textureOf(inputs().picture);
    const TextureSampler sampler(texture);
    double at = 0.0;
    for (auto _ : state) {
        C4Vector p[5];
        for (int k = 0; k < 5; ++k)
            p[k] = {100.0 + at + k % 2, 200.0 + 0.7 * at + k % 3, 0.0, 1.0};
        benchmark::DoNotOptimize(read(sampler, p));
        at = at < 700.0 ? at + 0.31 : 0.0;
    }
    state.SetItemsProcessed(state.iterations());
}
void readNearestTexel(benchmark::State &state)
{
    readTexture(state, [](const auto &s, const C4Vector *p) { return s.nearest(*p); });
}
void readAverageOfFive(benchmark::State &state)
{
    readTexture(state, [](const auto &s, const C4Vector *p) { return s.average(p); });
}
void readSmooth(benchmark::State &state)
{
    readTexture(state, [](const auto &s, const C4Vector *p) { return s.smooth(*p); });
}
BENCHMARK(readNearestTexel);
BENCHMARK(readAverageOfFive);
BENCHMARK(readSmooth);

// One triangle in the middle of the picture, painted alone and with its colours.
class OneTriangle : public TriangleSource {
public:
    explicit OneTriangle(int side)
    {
        shape.screen[0] = {640, 480 - side};
        shape.screen[1] = {640 - side, 480 + side / 2};
        shape.screen[2] = {640 + side, 480 + side};
        shape.vertices[0] = {300.0, 700.0, 20.0, 1.0};
        shape.vertices[1] = {200.0, 200.0, 25.0, 1.0};
        shape.vertices[2] = {800.0, 180.0, 10.0, 1.0};
        for (C4Vector &normal : shape.normals)
            normal = {0.1, 0.2, 0.97, 1.0};
    }
    Triangle triangle(unsigned int) const override { return shape; }
    Triangle shape;
};

void fillTriangle(benchmark::State &state)
{
    const C4Vector light{0.6, 0.0, -0.8, 0.0};
    TextureImage texture = textureOf(inputs().picture);
    TextureImage target(1280, 960, QImage::Format_RGB32);
    target.fill(0xFF000000u);
    Transformation camera(nullptr, light, 1280, 960);
    camera.SetView({512.0, 400.0, 900.0, 1.0}, 0.0, -1.5, 1000.0, 0.0);
    const OneTriangle source(int(state.range(0)));
    ScreenTrigon trigon(&target, &texture, light, &camera, 0);
    for (auto _ : state) {
        const auto &s = source.shape.screen;
        trigon.Rechnen(s[0], s[1], s[2], 1);
        if (state.range(1) != 0)
            trigon.resolve(source, {0, target.height() - 1});
    }
}
BENCHMARK(fillTriangle)
    ->ArgNames({"side", "colours"})
    ->ArgsProduct({{1, 8, 64, 400}, {0}})
    ->Args({400, 1});

} // namespace

BENCHMARK_MAIN();
