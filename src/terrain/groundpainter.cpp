#include "terrain/groundpainter.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int Places = 1024; // of the tables of colours
// Ground below the sea is under water; where it is hardly lower, such as in a polder,
// only what is level at about 0 is.
constexpr float HardlyLower = -10.0f;
constexpr float LevelSea = -1.0f;
// Slopes were chosen for cells of 30 m.
constexpr double UsualCell = 30.0;

float mixed(float a, float b, float share) { return a + share * (b - a); }

unsigned int channel(float value)
{
    const float rounded = std::clamp(value, 0.0f, 255.0f) + 0.5f;
    return static_cast<unsigned int>(rounded);
}

} // namespace

GroundPainter::GroundPainter(const GroundPalette &palette, const GroundPlaces &places,
                             float lowest, double cell, int width)
    : m_palette(palette), m_ground(table(palette.ground)), m_rock(table(palette.rock)),
      m_places(places), m_lowest(lowest),
      m_slopeFactor(
          static_cast<float>(std::clamp(std::pow(cell / UsualCell, 0.25), 0.8, 3.0))),
      m_speckle(width), m_patches(std::size_t(width)), m_grain(std::size_t(width))
{
}

std::vector<GroundPainter::Colour>
GroundPainter::table(std::span<const PaletteStop> stops)
{
    std::vector<Colour> colours(Places);
    std::size_t upper = 1;
    for (std::size_t i = 0; i < Places; ++i) {
        const float height = float(i) / float(Places - 1);
        while (upper + 1 < stops.size() && stops[upper].height < height)
            ++upper;
        const PaletteStop &a = stops[upper - 1];
        const PaletteStop &b = stops[upper];
        const float share = (height - a.height) / (b.height - a.height);
        colours[i] = {mixed(a.rgb[0], b.rgb[0], share), mixed(a.rgb[1], b.rgb[1], share),
                      mixed(a.rgb[2], b.rgb[2], share)};
    }
    return colours;
}

bool GroundPainter::isSea(float metres, float east, float north) const
{
    if (metres > 0.0f)
        return false;
    const bool isLevel = east == 0.0f && north == 0.0f && metres >= LevelSea;
    return isLevel || (m_palette.hasSea && m_lowest < HardlyLower);
}

// Water darkens fast below the shore and slowly farther down.
GroundPainter::Colour GroundPainter::sea(float metres) const
{
    const float depth =
        m_lowest < HardlyLower ? std::min(metres / m_lowest, 1.0f) : 0.25f;
    const float share = std::sqrt(std::max(depth, 0.0f));
    const auto &a = m_palette.shallow;
    const auto &b = m_palette.deep;
    return {mixed(a[0], b[0], share), mixed(a[1], b[1], share), mixed(a[2], b[2], share)};
}

GroundPainter::Colour GroundPainter::land(float metres, float slope, float patch) const
{
    const float place = m_places.at(metres) * float(Places - 1);
    const float wavering = place + patch * m_palette.belts * float(Places) * 0.5f;
    const auto at = [](float p) {
        return static_cast<std::size_t>(std::clamp(p, 0.0f, float(Places - 1)));
    };
    const Colour &ground = m_ground[at(wavering)];
    const Colour &rock = m_rock[at(place)];
    const float steep =
        (slope * m_slopeFactor * (1.0f + 0.25f * patch) - m_palette.rockFrom) /
        (m_palette.rockFull - m_palette.rockFrom);
    const float t = std::clamp(steep, 0.0f, 1.0f);
    const float share = t * t * (3.0f - 2.0f * t);
    return {mixed(ground.r, rock.r, share), mixed(ground.g, rock.g, share),
            mixed(ground.b, rock.b, share)};
}

void GroundPainter::paint(int y, const GroundRow &row, QRgb *pixels)
{
    m_speckle.readPatches(y, m_patches.data());
    m_speckle.readGrain(y, m_grain.data());
    for (int x = 0; x < row.width; ++x) {
        const float east = row.east[x];
        const float north = row.north[x];
        const float grain = m_grain[std::size_t(x)];
        Colour colour{};
        if (isSea(row.metres[x], east, north)) {
            colour = sea(row.metres[x]);
        } else {
            const float patch = m_patches[std::size_t(x)] + 0.3f * grain;
            colour = land(row.metres[x], std::sqrt(east * east + north * north), patch);
            const float bright =
                1.0f +
                m_palette.speckle * (0.6f * grain + 0.4f * m_patches[std::size_t(x)]);
            colour = {colour.r * bright, colour.g * bright, colour.b * bright};
        }
        pixels[x] = 0xFF000000u | channel(colour.r) << 16 | channel(colour.g) << 8 |
                    channel(colour.b);
    }
}
