#include "generator/noise.h"

#include <cmath>
#include <cstdint>

namespace {

std::uint32_t hash(int x, int y, unsigned seed)
{
    std::uint32_t h = seed * 0x9E3779B9u ^ std::uint32_t(x) * 0x85EBCA6Bu ^
                      std::uint32_t(y) * 0xC2B2AE35u;
    h = (h ^ (h >> 15)) * 0x2C1B3C6Du;
    h = (h ^ (h >> 12)) * 0x297A2D39u;
    return h ^ (h >> 15);
}

double cornerTerm(int ix, int iy, double dx, double dy, unsigned seed)
{
    const double angle = hash(ix, iy, seed) * (6.283185307179586 / 4294967296.0);
    return std::cos(angle) * dx + std::sin(angle) * dy;
}

double fade(double t) { return t * t * t * (t * (t * 6 - 15) + 10); }

double mix(double a, double b, double t) { return a + (b - a) * t; }

} // namespace

double gradientNoise(double x, double y, unsigned seed)
{
    const int ix = static_cast<int>(std::floor(x));
    const int iy = static_cast<int>(std::floor(y));
    const double dx = x - ix;
    const double dy = y - iy;
    const double top = mix(cornerTerm(ix, iy, dx, dy, seed),
                           cornerTerm(ix + 1, iy, dx - 1, dy, seed), fade(dx));
    const double bottom = mix(cornerTerm(ix, iy + 1, dx, dy - 1, seed),
                              cornerTerm(ix + 1, iy + 1, dx - 1, dy - 1, seed), fade(dx));
    return 1.5 * mix(top, bottom, fade(dy));
}

double fractalNoise(double x, double y, int octaves, unsigned seed)
{
    double sum = 0.0;
    double weight = 0.5;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * gradientNoise(x, y, seed + unsigned(i));
        x *= 2;
        y *= 2;
        weight *= 0.5;
    }
    return sum;
}

double ridgedNoise(double x, double y, int octaves, unsigned seed)
{
    double sum = 0.0;
    double weight = 0.5;
    double crest = 1.0;
    for (int i = 0; i < octaves; ++i) {
        const double ridge = 1.0 - std::abs(gradientNoise(x, y, seed + unsigned(i)));
        const double signal = ridge * ridge * crest;
        sum += weight * signal;
        crest = std::fmin(1.0, signal * 1.6);
        x *= 2.03;
        y *= 2.03;
        weight *= 0.5;
    }
    return sum;
}
