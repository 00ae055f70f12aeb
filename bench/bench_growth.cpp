// How frames grow with the mesh, the picture and the number of threads, and how long
// somebody waits who stops one.

#include "bench/frame.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

void mesh(benchmark::State &state)
{
    FastFrame frame(Flight, 0, 1280, 960, int(state.range(0)));
    frame.sweep.threads = int(state.range(1));
    for (auto _ : state)
        frame.draw();
}
BENCHMARK(mesh)
    ->ArgNames({"cells", "threads"})
    ->ArgsProduct({{256, 512, 1024, 2048, 4096}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void picture(benchmark::State &state)
{
    FastFrame frame(Flight, 1, int(state.range(0)), int(state.range(1)));
    frame.sweep.threads = int(state.range(2));
    for (auto _ : state)
        frame.draw();
}
void pictures(benchmark::internal::Benchmark *bench)
{
    for (const int threads : {1, 2}) {
        for (const int width : {320, 640, 1280, 2560, 5120})
            bench->Args({width, width * 3 / 4, threads});
        bench->Args({8192, 8192, threads});
    }
}
BENCHMARK(picture)
    ->ArgNames({"width", "height", "threads"})
    ->Apply(pictures)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// The longest of the times from a stop to the end of the frame, for stops before many of
// its rows; and the longest between two rows, in which a window does not answer.
void stop(benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::duration time) {
        return std::chrono::duration<double, std::milli>(time).count();
    };
    const int width = int(state.range(2));
    FastFrame frame(state.range(0) ? Overview : Flight, 1, width, width * 3 / 4);
    frame.sweep.threads = int(state.range(1));
    double longestStop = 0.0, longestRow = 0.0;
    for (auto _ : state) {
        int rows = 0;
        Clock::time_point last = Clock::now();
        frame.sweep.rowStarts = [&] {
            const auto now = Clock::now();
            longestRow = std::max(longestRow, milliseconds(now - last));
            last = now;
            ++rows;
            return true;
        };
        frame.draw();
        const int all = rows;
        for (int k = 1; k <= 40; ++k) {
            int left = all * k / 40;
            frame.sweep.rowStarts = [&] {
                if (--left == 0)
                    last = Clock::now();
                return left > 0;
            };
            frame.draw();
            longestStop = std::max(longestStop, milliseconds(Clock::now() - last));
        }
    }
    state.counters["stop_ms"] = longestStop;
    state.counters["row_ms"] = longestRow;
}
BENCHMARK(stop)
    ->ArgNames({"overview", "threads", "width"})
    ->ArgsProduct({{0, 1}, {1, 2}, {1280, 2560, 5120}})
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
