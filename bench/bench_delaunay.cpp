// Triangulation of random points and the filling of the triangles onto 1024 by
// 1024 pixels: how the time grows with the number of points.
#include "importers/delaunay.h"
#include "importers/scantriangles.h"
#include "raster/elevationimage.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <random>

namespace {

constexpr int Side = 1024;

void fillRandomly(CDoubleMatrix &points, CDoubleVector &z, std::int32_t count)
{
    points.Allocate(count + 3, 2);
    z.Allocate(count);
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> uniform(0, Side);
    for (std::int32_t i = 0; i < count; ++i) {
        points.rows[i][0] = uniform(generator);
        points.rows[i][1] = uniform(generator) - 1;
        z.data[i] = uniform(generator);
    }
}

// The corners' lines go to standard output, where the report goes too.
class Silence {
public:
    Silence() : m_output(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        const int sink = open("/dev/null", O_WRONLY);
        dup2(sink, STDOUT_FILENO);
        close(sink);
    }
    ~Silence()
    {
        std::fflush(stdout);
        dup2(m_output, STDOUT_FILENO);
        close(m_output);
    }

private:
    int m_output;
};

void triangulate(benchmark::State &state)
{
    const auto count = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        CDoubleMatrix points;
        CDoubleVector z;
        fillRandomly(points, z, count);
        NoProgress unwatched;
        benchmark::DoNotOptimize(Delaunay(points, count, 2, unwatched));
    }
    state.SetComplexityN(count);
}

void triangulateAndFill(benchmark::State &state)
{
    const auto count = static_cast<std::int32_t>(state.range(0));
    const Silence silence;
    for (auto _ : state) {
        CDoubleMatrix points;
        CDoubleVector z;
        fillRandomly(points, z, count);
        NoProgress unwatched;
        auto triangles = Delaunay(points, count, 2, unwatched);
        ElevationImage image(Side, Side, QImage::Format_RGB888);
        image.clear(0xFF000000u);
        ScanTriangles(&points, &z, &triangles->corners, triangles->count, &image);
    }
    state.SetComplexityN(count);
}

} // namespace

BENCHMARK(triangulate)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(triangulateAndFill)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

BENCHMARK_MAIN();
