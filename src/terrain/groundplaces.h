#pragma once

#include <cstddef>
#include <utility>
#include <vector>

struct FilledHeights;
struct GroundPalette;

/// Which colour of a palette the heights of a terrain have: places 0 to 1 between its
/// first and its last colour. Where most of the ground lies low, as in wide plains below
/// a few hills, heights that much ground shares are given more of the colours.
class GroundPlaces {
public:
    GroundPlaces(const FilledHeights &filled, const GroundPalette &palette);
    /// Of a terrain of this range whose heights are spread evenly.
    GroundPlaces(std::pair<float, float> range, const GroundPalette &palette);

    [[nodiscard]] float at(float metres) const
    {
        const float step = (metres - m_lowest) * m_perMetre;
        const float most = float(m_places.size() - 1);
        const float within = step > 0.0f ? (step < most ? step : most) : 0.0f;
        return m_places[static_cast<std::size_t>(within)];
    }

private:
    void count(const FilledHeights &filled, float share);

    float m_lowest = 0.0f; ///< of the land
    float m_perMetre = 0.0f;
    std::vector<float> m_places; ///< by height, in even steps
};
