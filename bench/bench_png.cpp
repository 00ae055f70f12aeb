// PNG files of rasters, beside those of the toolkit in the same run.

#include "base/progress.h"
#include "raster/pngwriter.h"

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QImage>

#include <cmath>
#include <functional>
#include <thread>
#include <vector>

namespace {

constexpr int Width = 4800, Height = 6000; // a tile of the well-known 30 second files

// Smooth noise of one wavelength, the same in every run: corners have random heights.
class Waves {
public:
    explicit Waves(int length) : m_length(length), m_columns(Width / length + 2)
    {
        unsigned int seed = static_cast<unsigned int>(length) * 7919u + 1;
        m_heights.resize(std::size_t(m_columns) * (Height / length + 2));
        for (float &height : m_heights) {
            seed = seed * 1664525u + 1013904223u;
            height = float(seed >> 8) / float(1 << 24);
        }
    }
    [[nodiscard]] float at(int x, int y) const
    {
        const auto corner = std::size_t(y / m_length) * m_columns + x / m_length;
        const float fx = smooth(float(x % m_length) / float(m_length));
        const float fy = smooth(float(y % m_length) / float(m_length));
        const float above = m_heights[corner] * (1 - fx) + m_heights[corner + 1] * fx;
        const float below = m_heights[corner + m_columns] * (1 - fx) +
                            m_heights[corner + m_columns + 1] * fx;
        return above * (1 - fy) + below * fy;
    }

private:
    static float smooth(float v) { return v * v * (3 - 2 * v); }

    int m_length;
    int m_columns;
    std::vector<float> m_heights;
};

// Heights of 0 to 4000 m in steps of 1 / `steps` m, with a sea at the bottom.
QImage terrain(int steps)
{
    std::vector<Waves> waves;
    for (int length = 1024; length >= 2; length /= 2)
        waves.emplace_back(length);
    QImage image(Width, Height, QImage::Format_RGB888);
    for (int y = 0; y < Height; ++y) {
        uchar *pixel = image.scanLine(y);
        for (int x = 0; x < Width; ++x) {
            float height = -800, share = 2400;
            for (const Waves &wave : waves) {
                height += wave.at(x, y) * share;
                share *= 0.5F;
            }
            const int value = static_cast<int>(std::max(height, 0.0F) * float(steps));
            *pixel++ = static_cast<uchar>(value >> 16);
            *pixel++ = static_cast<uchar>(value >> 8);
            *pixel++ = static_cast<uchar>(value);
        }
    }
    return image;
}

const QImage &picture(int kind)
{
    static const QImage metres = terrain(1);
    static const QImage centimetres = terrain(100);
    static const QImage shown = metres.convertToFormat(QImage::Format_RGB32);
    static const QImage grey = [] {
        QImage image(Width, Height, QImage::Format_Grayscale8);
        for (int y = 0; y < Height; ++y) {
            const uchar *const from = metres.constScanLine(y);
            uchar *const to = image.scanLine(y);
            for (int x = 0; x < Width; ++x)
                to[x] = static_cast<uchar>((from[3 * x + 1] << 8 | from[3 * x + 2]) >> 4);
        }
        return image;
    }();
    static const QImage palette = [] {
        QImage image(grey.constBits(), Width, Height, grey.bytesPerLine(),
                     QImage::Format_Indexed8);
        for (int i = 0; i < 256; ++i)
            image.setColor(i, qRgb(i, 255 - i, i * 7 % 256));
        return image;
    }();
    const QImage *const all[] = {&metres, &centimetres, &shown, &grey, &palette};
    return *all[kind];
}

void measured(benchmark::State &state, const std::function<bool(QBuffer &)> &write)
{
    qint64 size = 0;
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        if (!write(buffer))
            state.SkipWithError("not written");
        size = buffer.size();
    }
    state.counters["MB"] = double(size) / 1e6;
}

void toolkit(benchmark::State &state)
{
    const QImage &image = picture(static_cast<int>(state.range(0)));
    measured(state, [&image](QBuffer &buffer) { return image.save(&buffer, "png"); });
}

void threads(benchmark::State &state, int count)
{
    const QImage &image = picture(static_cast<int>(state.range(0)));
    NoProgress unwatched;
    measured(state,
             [&](QBuffer &buffer) { return writePng(buffer, image, unwatched, count); });
}

void oneThread(benchmark::State &state) { threads(state, 1); }

void allCores(benchmark::State &state)
{
    threads(state, static_cast<int>(std::thread::hardware_concurrency()));
}

// metres, centimetres, 32 bits of metres, grey, palette
#define PICTURES DenseRange(0, 4)->UseRealTime()->Unit(benchmark::kMillisecond)
BENCHMARK(toolkit)->PICTURES;
BENCHMARK(oneThread)->PICTURES;
BENCHMARK(allCores)->PICTURES;

} // namespace

BENCHMARK_MAIN();
