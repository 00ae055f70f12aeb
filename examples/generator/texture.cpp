#include "generator/texture.h"

#include "generator/noise.h"
#include "generator/terrain.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Colour = std::array<double, 3>;

constexpr Colour DeepWater{22, 58, 84};
constexpr Colour ShoreWater{58, 112, 124};
constexpr Colour Sand{176, 160, 122};
constexpr Colour Meadow{112, 138, 62};
constexpr Colour DryMeadow{158, 150, 86};
constexpr Colour Wood{42, 70, 36};
constexpr Colour DarkWood{26, 48, 28};
constexpr Colour Heath{128, 118, 84};
constexpr Colour Rock{124, 116, 108};
constexpr Colour DarkRock{82, 76, 74};
constexpr Colour Snow{246, 248, 252};
constexpr Colour OldSnow{214, 224, 236};

Colour mix(const Colour &a, const Colour &b, double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t};
}

double step(double from, double to, double v)
{
    const double t = std::clamp((v - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// What the ground is like at one place.
struct Place {
    double u, v; // 0 to 1 across the picture
    double height;
    double steepness; // tangent of the slope
    double hollow;    // above 0 in gullies, below 0 on crests
};

Place placeAt(const HeightField &terrain, double u, double v, double relief)
{
    const double x = u * (terrain.side - 1);
    const double y = v * (terrain.side - 1);
    const double h = terrain.sample(x, y);
    const double west = terrain.sample(x - 1, y);
    const double east = terrain.sample(x + 1, y);
    const double north = terrain.sample(x, y - 1);
    const double south = terrain.sample(x, y + 1);
    const double tangent = std::hypot(east - west, south - north) * 0.5 * relief;
    constexpr double Far = 3;
    const double around = (terrain.sample(x - Far, y) + terrain.sample(x + Far, y) +
                           terrain.sample(x, y - Far) + terrain.sample(x, y + Far)) *
                          0.25;
    return {u, v, h, tangent, (around - h) * relief};
}

Colour water(const Place &p)
{
    return mix(ShoreWater, DeepWater, step(0.0, 0.035, LakeLevel - p.height));
}

Colour lowland(const Place &p)
{
    const double patch = fractalNoise(p.u * 22, p.v * 22, 4, 200);
    Colour ground = mix(Meadow, DryMeadow, step(-0.15, 0.3, patch));
    const double tree = fractalNoise(p.u * 14, p.v * 14, 5, 300) +
                        0.35 * gradientNoise(p.u * 260, p.v * 260, 310) +
                        (0.36 - p.height) * 0.5;
    const double treeLine = step(0.36, 0.27, p.height + 0.05 * patch);
    const Colour wood =
        mix(Wood, DarkWood, step(-0.4, 0.5, gradientNoise(p.u * 330, p.v * 330, 320)));
    ground = mix(ground, wood, step(-0.02, 0.12, tree) * treeLine);
    return mix(ground, Sand, step(0.022, 0.0, p.height - LakeLevel));
}

Colour rock(const Place &p)
{
    // Layers that follow the height make cliffs read as rock.
    const double bands =
        std::sin(p.height * 150 + fractalNoise(p.u * 9, p.v * 9, 3, 400) * 6);
    const double grain = fractalNoise(p.u * 120, p.v * 120, 3, 410);
    return mix(Rock, DarkRock, 0.45 + 0.22 * bands + 0.9 * grain + p.hollow * 0.25);
}

Colour ground(const Place &p)
{
    if (p.height < LakeLevel)
        return water(p);
    const double wild = fractalNoise(p.u * 30, p.v * 30, 4, 500);
    Colour c = lowland(p);
    c = mix(c, Heath, step(0.28, 0.42, p.height + 0.08 * wild));
    const double bare = step(0.75, 1.15, p.steepness + 0.25 * wild) +
                        step(0.40, 0.56, p.height + 0.06 * wild);
    c = mix(c, rock(p), bare);
    // Snow lies above its line, lower in gullies, and slides off the cliffs.
    const double line = p.height + 0.07 * wild + std::clamp(p.hollow, -0.3, 0.5) * 0.10;
    const double lies = step(1.75, 1.05, p.steepness + 0.2 * wild);
    const Colour snow = mix(Snow, OldSnow, step(-0.2, 0.5, p.hollow + 0.4 * wild));
    return mix(c, snow, step(0.47, 0.56, line) * lies);
}

int byteOf(double v) { return static_cast<int>(std::clamp(v, 0.0, 255.0)); }

} // namespace

QImage paintGround(const HeightField &terrain, int side, double relief)
{
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const Place place =
                placeAt(terrain, (x + 0.5) / side, (y + 0.5) / side, relief);
            const Colour c = ground(place);
            const double shade = 1.0 + 0.10 * gradientNoise(x * 0.45, y * 0.45, 600) *
                                           (place.height > LakeLevel);
            row[x] =
                qRgb(byteOf(c[0] * shade), byteOf(c[1] * shade), byteOf(c[2] * shade));
        }
    }
    return image.convertToFormat(QImage::Format_RGB888);
}
