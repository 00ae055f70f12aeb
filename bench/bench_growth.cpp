// How frames grow with the mesh, the picture and the number of threads, and how long
// somebody waits who stops one.

#include "bench/frame.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace {

void mesh(benchmark::State &state)
{
    FastFrame frame(Flight, 0, 1280, 960, int(state.range(0)));
    frame.setup.threads = int(state.range(1));
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
    frame.setup.threads = int(state.range(2));
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

// How long somebody waits who stops a frame: from a request just after one row has
// looked for it, through the row after, which sees it, to the end of the frame. The rows
// taken are the 40 before which most time passes.
void stop(benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    const int width = int(state.range(2));
    FastFrame frame(state.range(0) ? Overview : Flight, 1, width, width * 3 / 4);
    frame.setup.threads = int(state.range(1));
    double longest = 0.0;
    for (auto _ : state) {
        std::vector<std::pair<Clock::duration, int>> gaps; // before a row, its number
        int row = 0;
        Clock::time_point last = Clock::now();
        frame.rowStarts = [&] {
            const auto now = Clock::now();
            gaps.emplace_back(now - last, row++);
            last = now;
            return true;
        };
        frame.draw();
        std::sort(gaps.rbegin(), gaps.rend());
        gaps.resize(std::min<std::size_t>(gaps.size(), 40));
        for (const auto &[gap, stopped] : gaps) {
            row = 0;
            Clock::time_point asked = Clock::now();
            frame.rowStarts = [&, at = stopped] {
                if (row < at)
                    asked = Clock::now();
                return row++ < at;
            };
            frame.draw();
            const std::chrono::duration<double, std::milli> waited = Clock::now() - asked;
            longest = std::max(longest, waited.count());
        }
    }
    state.counters["waits_ms"] = longest;
}
BENCHMARK(stop)
    ->ArgNames({"overview", "threads", "width"})
    ->ArgsProduct({{0, 1}, {1, 2}, {1280, 2560, 5120}})
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
