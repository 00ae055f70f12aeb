#include "terrain/colourramp.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Rounds as gdaldem does, halves and a little more down.
constexpr double Rounding = 0.45;

int between(int a, int b, double share)
{
    return std::clamp(static_cast<int>(Rounding + a + share * (b - a)), 0, 255);
}

// Moves the stops [first, last) that stand at one height a little apart, by as little as
// the numbers allow, so that each has its place.
void moveApart(std::vector<ColourStop> &stops, std::size_t first, std::size_t last)
{
    constexpr double Epsilon = std::numeric_limits<double>::epsilon();
    const double height = stops[first].metres;
    const double below = first > 0 ? stops[first - 1].metres : height;
    const double count = double(last - first);
    const double whole = stops[last].metres - below;
    if (!(whole > std::abs(height) * count * Epsilon))
        return;
    // More of them go to the side on which there is more room.
    double share = 0.5 - count * (height - below) / whole;
    for (std::size_t i = first; i < last; ++i, share += 1.0)
        stops[i].metres += std::abs(height) * share * Epsilon;
}

// As gdaldem does with all but the last of them.
void moveApart(std::vector<ColourStop> &stops)
{
    std::size_t first = 0;
    for (std::size_t i = 1; i < stops.size(); ++i) {
        if (stops[i].metres == stops[first].metres)
            continue;
        if (i - first > 1)
            moveApart(stops, first, i);
        first = i;
    }
}

QRgb colourOf(const ColourStop &stop)
{
    return qRgb(stop.rgb[0], stop.rgb[1], stop.rgb[2]);
}

} // namespace

ColourRamp::ColourRamp(const ColourTable &table, std::pair<double, double> range)
    : m_stops(table.stops)
{
    for (ColourStop &stop : m_stops) {
        if (stop.isShare)
            stop.metres = range.first + stop.metres * (range.second - range.first);
        stop.isShare = false;
    }
    std::stable_sort(
        m_stops.begin(), m_stops.end(),
        [](const ColourStop &a, const ColourStop &b) { return a.metres < b.metres; });
    moveApart(m_stops);
    std::size_t near = 0;
    m_ofVoids = table.ofVoids.value_or(at(range.first, near));
}

// Whether a stop is the first that is not below a height.
bool ColourRamp::isUpperStop(std::size_t i, double metres) const
{
    return (i == m_stops.size() || m_stops[i].metres >= metres) &&
           (i == 0 || m_stops[i - 1].metres < metres);
}

QRgb ColourRamp::at(double metres, std::size_t &near) const
{
    if (!isUpperStop(near, metres))
        near = static_cast<std::size_t>(
            std::lower_bound(m_stops.begin(), m_stops.end(), metres,
                             [](const ColourStop &stop, double height) {
                                 return stop.metres < height;
                             }) -
            m_stops.begin());
    if (near == m_stops.size())
        return colourOf(m_stops.back());
    const ColourStop &upper = m_stops[near];
    if (near == 0 || upper.metres == metres)
        return colourOf(upper);
    const ColourStop &lower = m_stops[near - 1];
    const double share = (metres - lower.metres) / (upper.metres - lower.metres);
    return qRgb(between(lower.rgb[0], upper.rgb[0], share),
                between(lower.rgb[1], upper.rgb[1], share),
                between(lower.rgb[2], upper.rgb[2], share));
}
