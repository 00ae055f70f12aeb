#include "terrain/shading.h"

#include "base/pi.h"
#include "base/workerpool.h"
#include "terrain/directions.h"
#include "terrain/skyshare.h"
#include "terrain/sloperows.h"

#include <algorithm>
#include <functional>

namespace {

constexpr float ShareOfSky = 0.3f; // of the light of flat ground
constexpr float ShareOfSun = 1.0f - ShareOfSky;
constexpr double LowestFullSun = 0.3420201433256687; // sine of 20 degrees
constexpr double SunDiameter = 0.53;                 // degrees

double radians(double degrees) { return degrees * (Pi / 180.0); }

// The visible share of an even disc of which a horizon cuts off the lower part; `above`
// is how far the middle stands above the horizon, in radii.
float shareOfDisc(double above)
{
    if (above <= -1.0 || above >= 1.0)
        return above < 0.0 ? 0.0f : 1.0f;
    const double area = above * std::sqrt(1.0 - above * above) + std::asin(above);
    return static_cast<float>(0.5 + area / Pi);
}

// Tells the visible share of the sun from the tangent of the horizon before it.
class SunOverHorizon {
public:
    explicit SunOverHorizon(double degrees)
        : m_height(radians(degrees)), m_radius(radians(SunDiameter / 2)),
          m_free(tangent(m_height - m_radius)), m_hidden(tangent(m_height + m_radius))
    {
    }
    [[nodiscard]] float operator()(float horizon) const
    {
        if (horizon <= m_free)
            return 1.0f;
        if (horizon >= m_hidden)
            return 0.0f;
        return shareOfDisc((m_height - std::atan(double(horizon))) / m_radius);
    }

private:
    static float tangent(double angle)
    {
        return static_cast<float>(std::tan(std::clamp(angle, -1.55, 1.55)));
    }
    double m_height;
    double m_radius;
    float m_free;   // horizons up to here leave all of the disc
    float m_hidden; // and from here on nothing
};

// Slopes toward the sun are brighter than flat ground, whose colours leave little room.
float softened(float light) { return light > 1.0f ? 0.5f + 0.5f * light : light; }

// Light of the sun, without shadows, into `map`.
bool lightBySun(const Ground &ground, const TextureRequest &request, LightMap &map,
                WorkerPool &pool, const Stretch &stretch)
{
    const double azimuth = radians(request.sunAzimuth);
    const double height = radians(request.sunHeight);
    const double strength = request.sunHeight > 0.0
                                ? ShareOfSun / std::max(std::sin(height), LowestFullSun)
                                : 0.0;
    const auto toEast =
        static_cast<float>(strength * std::sin(azimuth) * std::cos(height));
    const auto toNorth =
        static_cast<float>(strength * std::cos(azimuth) * std::cos(height));
    const auto up = static_cast<float>(strength * std::sin(height));
    const int width = map.size.width();
    return workOnPieces(pool, map.size.height(), 16, stretch, [&](int first, int last) {
        SlopeRows slopes(ground.heights, ground.cellX, ground.cellY);
        std::vector<float> east(std::size_t(width), 0.0f), north(east);
        for (int y = first; y < last; ++y) {
            slopes.read(y, east.data(), north.data());
            float *const light = map.row(y);
            for (int x = 0; x < width; ++x) {
                const float e = east[std::size_t(x)];
                const float n = north[std::size_t(x)];
                const float length = std::sqrt(1.0f + e * e + n * n);
                const float sun = (up - e * toEast - n * toNorth) / length;
                light[x] = std::max(sun, 0.0f);
            }
        }
    });
}

bool castShadows(const Ground &ground, const TextureRequest &request, LightMap &map,
                 WorkerPool &pool, const Stretch &stretch)
{
    if (request.sunHeight <= 0.0)
        return true;
    const SunOverHorizon sun(request.sunHeight);
    const Direction direction =
        directionTo(radians(request.sunAzimuth), ground.cellX, ground.cellY);
    const QSize size = map.size;
    CellStrips heights(size, direction.isExchanged);
    CellStrips visible(size, direction.isExchanged);
    const auto look = [&](const HorizonLines::Walk &walk) {
        const float *const horizon = walk.horizon();
        visible.forParts(walk.column(), walk.row(), walk.count(),
                         [&](float *cells, int i, int n) {
                             std::transform(horizon + i, horizon + i + n, cells, sun);
                         });
    };
    const auto shade = [&](int first, int last) {
        std::vector<float> shares(std::size_t(last - first) * std::size_t(size.width()));
        visible.take(first, last, shares.data());
        float *const light = map.row(first);
        std::transform(shares.begin(), shares.end(), light, light, std::multiplies<>());
    };
    return putHeights(ground.heights, heights, pool, stretch.part(0.0, 0.1)) &&
           sweepHorizon(heights, direction, pool, stretch.part(0.1, 0.9), look) &&
           workOnPieces(pool, size.height(), CellStrips::Width, stretch.part(0.9, 1.0),
                        shade);
}

bool addSky(const Ground &ground, bool isOpen, LightMap &map, WorkerPool &pool,
            const Stretch &stretch)
{
    std::vector<float> share;
    if (!isOpen && !skyShare(ground, share, pool, stretch.part(0.0, 0.95)))
        return false;
    const int width = map.size.width();
    return workOnPieces(
        pool, map.size.height(), 64, stretch.part(0.95, 1.0), [&](int first, int last) {
            const std::size_t begin = std::size_t(first) * std::size_t(width);
            const std::size_t end = std::size_t(last) * std::size_t(width);
            for (std::size_t i = begin; i < end; ++i)
                map.light[i] = softened(map.light[i] +
                                        (isOpen ? ShareOfSky : ShareOfSky * share[i]));
        });
}

} // namespace

Result<LightMap> bakeLight(const Ground &ground, const TextureRequest &request,
                           WorkerPool &pool, const Stretch &stretch)
{
    LightMap map;
    map.size = ground.heights.size;
    map.light.resize(ground.heights.metres.size());
    const bool hasShadows = request.light != BakedLight::Sun;
    const bool hasSky = request.light == BakedLight::Sky;
    const double sun = hasSky ? 0.06 : hasShadows ? 0.4 : 0.9; // shares of the time
    const double shadows = hasSky ? 0.15 : hasShadows ? 0.95 : sun;
    if (!lightBySun(ground, request, map, pool, stretch.part(0.0, sun)))
        return stopped();
    if (hasShadows &&
        !castShadows(ground, request, map, pool, stretch.part(sun, shadows)))
        return stopped();
    if (!addSky(ground, !hasSky, map, pool, stretch.part(shadows, 1.0)))
        return stopped();
    return map;
}
