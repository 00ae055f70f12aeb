#include "terraindialogs/terrainmap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

struct Stop {
    double share; // of the way from the lowest to the highest height
    double red, green, blue;
};
constexpr std::array<Stop, 6> Colours{{{0.0, 110, 150, 105},
                                       {0.25, 165, 185, 125},
                                       {0.5, 215, 200, 150},
                                       {0.75, 180, 150, 120},
                                       {0.9, 205, 195, 190},
                                       {1.0, 250, 250, 250}}};

/// 256 colours from the lowest to the highest height.
std::array<std::array<double, 3>, 256> ramp()
{
    std::array<std::array<double, 3>, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double share = double(i) / 255.0;
        const auto *upper = &Colours[1];
        while (upper->share < share)
            ++upper;
        const Stop &low = upper[-1];
        const double t = (share - low.share) / (upper->share - low.share);
        table[i] = {std::lerp(low.red, upper->red, t),
                    std::lerp(low.green, upper->green, t),
                    std::lerp(low.blue, upper->blue, t)};
    }
    return table;
}

/// How steep a map looks: the share of the standard deviation of slopes that counts as a
/// slope of 45 degrees, so that plains show their forms and mountains are not black.
double relief(const Heights &overview, int rows)
{
    double sum = 0.0;
    qint64 count = 0;
    for (int y = 1; y < rows; ++y) {
        const float *const here = overview.row(y);
        const float *const north = overview.row(y - 1);
        for (int x = 1; x < overview.size.width(); ++x) {
            const double a = here[x] - here[x - 1];
            const double b = here[x] - north[x];
            if (std::isnan(a) || std::isnan(b))
                continue;
            sum += a * a + b * b;
            ++count;
        }
    }
    const double deviation = count > 0 ? std::sqrt(sum / double(count)) : 0.0;
    return deviation > 0.0 ? 0.6 / deviation : 0.0;
}

quint32 shaded(const std::array<double, 3> &colour, double light)
{
    const auto part = [&](double value) {
        return quint32(std::clamp(value * light, 0.0, 255.0));
    };
    return 0xff000000u | part(colour[0]) << 16 | part(colour[1]) << 8 | part(colour[2]);
}

/// Height beyond an edge or a void: that of the cell itself.
double near(float other, float own) { return double(std::isnan(other) ? own : other); }

std::pair<double, double> rangeOfRows(const Heights &overview, int rows)
{
    float low = std::numeric_limits<float>::max();
    float high = std::numeric_limits<float>::lowest();
    const float *const end = overview.row(rows);
    for (const float *height = overview.row(0); height != end; ++height) {
        if (std::isnan(*height))
            continue;
        low = std::min(low, *height);
        high = std::max(high, *height);
    }
    return {double(low), double(high)};
}

} // namespace

double metresShape(const TerrainFacts &facts)
{
    const double shape = facts.cellY > 0.0 ? facts.cellX / facts.cellY : 1.0;
    if (!facts.isGeographic)
        return shape;
    const double middle =
        facts.transform[3] + facts.transform[5] * double(facts.size.height()) / 2.0;
    const double latitude = std::clamp(middle, -85.0, 85.0);
    return shape * std::cos(latitude * std::numbers::pi / 180.0);
}

QImage drawnMap(const Heights &overview, int rows, double shape)
{
    QImage map(overview.size, QImage::Format_ARGB32_Premultiplied);
    if (map.isNull())
        return map;
    map.fill(Qt::transparent);
    const auto [low, high] = rangeOfRows(overview, rows);
    const double share = high > low ? 255.0 / (high - low) : 0.0;
    const auto colours = ramp();
    const double steep = relief(overview, rows);
    const int last = overview.size.width() - 1;
    for (int y = 0; y < rows; ++y) {
        auto *const line = reinterpret_cast<quint32 *>(map.scanLine(y));
        const float *const here = overview.row(y);
        const float *const north = overview.row(std::max(y - 1, 0));
        const float *const south = overview.row(std::min(y + 1, rows - 1));
        for (int x = 0; x <= last; ++x) {
            const float own = here[x];
            if (std::isnan(own))
                continue;
            const double east = near(here[std::min(x + 1, last)], own);
            const double west = near(here[std::max(x - 1, 0)], own);
            const double dx = (east - west) * steep / std::max(shape, 0.01);
            const double dy = (near(south[x], own) - near(north[x], own)) * steep;
            // Light from the north-west at 45 degrees, level ground at 0.71.
            const double lit = (1.0 + (dx + dy) * std::numbers::sqrt2 / 2.0) /
                               std::sqrt(2.0 * (1.0 + dx * dx + dy * dy));
            const auto index = std::size_t((double(own) - low) * share);
            line[x] = shaded(colours[std::min<std::size_t>(index, 255)],
                             0.35 + 0.92 * std::max(lit, 0.0));
        }
    }
    return map;
}
