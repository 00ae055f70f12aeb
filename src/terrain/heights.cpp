#include "terrain/heights.h"

#include <algorithm>
#include <cmath>

qint64 countVoids(const Heights &heights)
{
    return std::count_if(heights.metres.begin(), heights.metres.end(),
                         [](float height) { return std::isnan(height); });
}

std::optional<std::pair<float, float>> rangeOf(const Heights &heights)
{
    std::optional<std::pair<float, float>> range;
    for (const float height : heights.metres) {
        if (std::isnan(height))
            continue;
        if (!range)
            range.emplace(height, height);
        range->first = std::min(range->first, height);
        range->second = std::max(range->second, height);
    }
    return range;
}
