#include "terrain/groundplaces.h"

#include "terrain/groundpalettes.h"
#include "terrain/groundtexture.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::size_t Steps = 4096; // between the lowest and the highest land
// Cells that are counted; more of them would not change the colours to be seen.
constexpr std::size_t MostCells = 1000000;
// Terrains that are all but level have the colour of low ground.
constexpr float PlaceOfLevel = 0.2f;
constexpr float LevelRange = 1e-3f; // metres

} // namespace

GroundPlaces::GroundPlaces(std::pair<float, float> range, const GroundPalette &palette)
    : m_lowest(palette.hasSea && range.second > 0.0f ? std::max(range.first, 0.0f)
                                                     : range.first),
      m_places(Steps, PlaceOfLevel)
{
    if (!(range.second - m_lowest > LevelRange))
        return;
    m_perMetre = float(Steps - 1) / (range.second - m_lowest);
    for (std::size_t i = 0; i < Steps; ++i)
        m_places[i] = float(i) / float(Steps - 1);
}

GroundPlaces::GroundPlaces(const FilledHeights &filled, const GroundPalette &palette)
    : GroundPlaces(filled.range, palette)
{
    if (m_perMetre > 0.0f && palette.evenness > 0.0f)
        count(filled, palette.evenness);
}

// Mixes a height's place with the share of the land that lies below it.
void GroundPlaces::count(const FilledHeights &filled, float share)
{
    const std::vector<float> &metres = filled.heights.metres;
    const std::size_t apart = metres.size() / MostCells + 1;
    std::vector<double> cells(Steps, 0.0);
    double all = 0.0;
    for (std::size_t i = 0; i < metres.size(); i += apart) {
        const float step = (metres[i] - m_lowest) * m_perMetre;
        if (!(step > 0.0f) || (!filled.isVoid.empty() && filled.isVoid[i]))
            continue;
        cells[std::min(static_cast<std::size_t>(step), Steps - 1)] += 1.0;
        all += 1.0;
    }
    if (!(all > 0.0))
        return;
    double below = 0.0;
    for (std::size_t i = 0; i < Steps; ++i) {
        const auto rank = static_cast<float>((below + cells[i] / 2.0) / all);
        below += cells[i];
        m_places[i] += share * (rank - m_places[i]);
    }
}
