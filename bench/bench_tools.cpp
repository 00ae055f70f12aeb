#include "tools/convolution.h"
#include "tools/elevationconversions.h"
#include "tools/mask.h"
#include "tools/merge.h"
#include "tools/rectify.h"
#include "tools/resample.h"

#include <benchmark/benchmark.h>

namespace {

NoProgress unwatched;

constexpr int Side = 4096;

// Pixels without a pattern that a branch predictor or a cache could learn.
QImage noise(int width, int height, QImage::Format format, quint32 seed = 1)
{
    QImage image(width, height, format);
    for (int y = 0; y < height; ++y) {
        auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525u + 1013904223u;
            row[x] = format == QImage::Format_RGB32 ? 0xFF000000u | seed >> 8 : seed;
        }
    }
    return image;
}

// Heights within the grays and somewhat beyond.
ElevationImage terrain()
{
    ElevationImage image(Side, Side, QImage::Format_RGB32);
    const QImage source = noise(Side, Side, QImage::Format_RGB32);
    for (int y = 0; y < Side; ++y) {
        const auto *const from = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        auto *const to = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < Side; ++x)
            to[x] = ElevationImage::pixelOf(int(from[x] & 0x1FFu) - 64, 1.0);
    }
    return image;
}

// Each run works on a fresh image, made outside the measured time.
template <class Tool>
void inPlace(benchmark::State &state, const ElevationImage &image, Tool tool)
{
    for (auto _ : state) {
        state.PauseTiming();
        ElevationImage copy(image);
        copy.bits(); // detach
        state.ResumeTiming();
        const QImage made = tool(std::move(copy));
        benchmark::DoNotOptimize(made.constBits());
    }
}

void elevationToGrayAndNormalized(benchmark::State &state)
{
    inPlace(state, terrain(), [](ElevationImage &&image) {
        GrayPicture gray = *elevationToGray(std::move(image), 1.0, unwatched);
        ElevationImage again;
        static_cast<QImage &>(again) = std::move(gray.picture);
        return normalizeToGray(std::move(again), gray.found, unwatched)->picture;
    });
}
BENCHMARK(elevationToGrayAndNormalized)->Unit(benchmark::kMillisecond);

void elevationToColor(benchmark::State &state)
{
    const QImage palette = noise(256, 1, QImage::Format_RGB32);
    inPlace(state, terrain(), [&palette](ElevationImage &&image) {
        const ElevationLimits range = elevationRange(image, false);
        return *elevationToColor(std::move(image), palette, int(range.lowest),
                                 int(range.highest), unwatched);
    });
}
BENCHMARK(elevationToColor)->Unit(benchmark::kMillisecond);

void grayToElevation(benchmark::State &state)
{
    inPlace(state, terrain(), [](ElevationImage &&image) {
        return QImage(grayToElevation(std::move(image), unwatched)->image);
    });
}
BENCHMARK(grayToElevation)->Unit(benchmark::kMillisecond);

void changeBlue0Pixels(benchmark::State &state)
{
    inPlace(state, terrain(), [](ElevationImage &&image) {
        return *changeBlue0Pixels(std::move(image), unwatched);
    });
}
BENCHMARK(changeBlue0Pixels)->Unit(benchmark::kMillisecond);

// To the same size, to half and to a size without a common measure.
void resample(benchmark::State &state)
{
    const ElevationImage source = terrain();
    const int side = static_cast<int>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(resample(source, {{side, side}, 1.0}, unwatched));
}
BENCHMARK(resample)->Arg(Side)->Arg(Side / 2)->Arg(5000)->Unit(benchmark::kMillisecond);

void merge(benchmark::State &state)
{
    const int side = static_cast<int>(state.range(0));
    const QImage first = noise(Side, Side, QImage::Format_RGB32);
    const QImage second = noise(side, side, QImage::Format_RGB32, 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(merge(first, second, {}, unwatched));
}
BENCHMARK(merge)->Arg(Side)->Arg(1500)->Arg(5000)->Unit(benchmark::kMillisecond);

void mask(benchmark::State &state)
{
    const int side = static_cast<int>(state.range(0));
    const QImage over = noise(side, side, QImage::Format_ARGB32, 2);
    inPlace(state, terrain(), [&over](ElevationImage &&image) {
        return *applyMask(std::move(image), over, unwatched);
    });
}
BENCHMARK(mask)->Arg(Side)->Arg(1500)->Unit(benchmark::kMillisecond);

// Kernels of random weights; a gray one is a box blur.
void convolve(benchmark::State &state)
{
    const int side = static_cast<int>(state.range(0));
    const QImage image = noise(Side, Side, QImage::Format_RGB32);
    const QImage kernel = noise(side, side, QImage::Format_RGB32, 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(convolve(image, kernel, unwatched));
}
BENCHMARK(convolve)->Arg(3)->Arg(15)->Unit(benchmark::kMillisecond);

void boxBlur(benchmark::State &state)
{
    const int side = static_cast<int>(state.range(0));
    const QImage image = noise(Side, Side, QImage::Format_RGB32);
    QImage kernel(side, side, QImage::Format_RGB32);
    kernel.fill(qRgb(200, 200, 200));
    for (auto _ : state)
        benchmark::DoNotOptimize(convolve(image, kernel, unwatched));
}
BENCHMARK(boxBlur)->Arg(15)->Unit(benchmark::kMillisecond);

void rectify(benchmark::State &state)
{
    const QImage image = noise(Side, Side, QImage::Format_RGB32);
    Ax = 400, Ay = 300, Bx = 3600, By = 310, Cx = 390, Cy = 2600, Dx = 3610, Dy = 2590;
    Ax_ = 560, Ay_ = 180, Bx_ = 3420, By_ = 440;
    Cx_ = 260, Cy_ = 2820, Dx_ = 3760, Dy_ = 2480;
    for (auto _ : state)
        benchmark::DoNotOptimize(rectify(image, unwatched));
}
BENCHMARK(rectify)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
