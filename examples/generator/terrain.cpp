#include "generator/terrain.h"

#include "generator/noise.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

struct Slope {
    double height, dx, dy;
};

Slope slopeAt(const HeightField &field, double x, double y)
{
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    const double fx = x - ix;
    const double fy = y - iy;
    const double nw = field.at(ix, iy);
    const double ne = field.at(ix + 1, iy);
    const double sw = field.at(ix, iy + 1);
    const double se = field.at(ix + 1, iy + 1);
    return {nw * (1 - fx) * (1 - fy) + ne * fx * (1 - fy) + sw * (1 - fx) * fy +
                se * fx * fy,
            (ne - nw) * (1 - fy) + (se - sw) * fy, (sw - nw) * (1 - fx) + (se - ne) * fx};
}

// Spreads an amount over the four pixels around a position.
void spread(HeightField &field, double x, double y, double amount)
{
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    const double fx = x - ix;
    const double fy = y - iy;
    field.at(ix, iy) += amount * (1 - fx) * (1 - fy);
    field.at(ix + 1, iy) += amount * fx * (1 - fy);
    field.at(ix, iy + 1) += amount * (1 - fx) * fy;
    field.at(ix + 1, iy + 1) += amount * fx * fy;
}

// One drop of rain: runs downhill, takes soil where it is fast and drops it
// where it slows down.
void runDrop(HeightField &field, double x, double y)
{
    constexpr int MaxSteps = 60;
    constexpr double Inertia = 0.1;
    constexpr double Capacity = 4.0;
    constexpr double Erosion = 0.25;
    constexpr double Deposition = 0.25;
    constexpr double Evaporation = 0.97;
    constexpr double MinSlope = 0.0005;

    double dirX = 0.0;
    double dirY = 0.0;
    double speed = 1.0;
    double water = 1.0;
    double soil = 0.0;
    for (int step = 0; step < MaxSteps; ++step) {
        const Slope here = slopeAt(field, x, y);
        dirX = dirX * Inertia - here.dx * (1 - Inertia);
        dirY = dirY * Inertia - here.dy * (1 - Inertia);
        const double length = std::hypot(dirX, dirY);
        if (length < 1e-12)
            return;
        const double newX = x + dirX / length;
        const double newY = y + dirY / length;
        const double limit = field.side - 9;
        if (!(newX >= 8 && newY >= 8 && newX < limit && newY < limit))
            return;
        const double fall = slopeAt(field, newX, newY).height - here.height;
        const double capacity = std::max(-fall, MinSlope) * speed * water * Capacity;
        if (soil > capacity || fall > 0) {
            const double drop =
                fall > 0 ? std::min(fall, soil) : (soil - capacity) * Deposition;
            soil -= drop;
            spread(field, x, y, drop);
        } else {
            const double take = std::min((capacity - soil) * Erosion, -fall);
            soil += take;
            spread(field, x, y, -take);
        }
        speed = std::sqrt(std::max(0.0, speed * speed - fall * 40));
        water *= Evaporation;
        x = newX;
        y = newY;
    }
}

void rain(HeightField &field, int drops, unsigned seed)
{
    // The distributions of the standard library differ between its makers.
    std::mt19937 engine(seed);
    const auto position = [&] {
        return 8 + (static_cast<double>(engine()) / 4294967296.0) * (field.side - 18);
    };
    for (int i = 0; i < drops; ++i) {
        const double x = position();
        const double y = position();
        runDrop(field, x, y);
    }
}

void smooth(HeightField &field, double weight)
{
    const HeightField old = field;
    for (int y = 1; y < field.side - 1; ++y)
        for (int x = 1; x < field.side - 1; ++x) {
            const double around = (old.at(x - 1, y) + old.at(x + 1, y) +
                                   old.at(x, y - 1) + old.at(x, y + 1)) *
                                  0.25;
            field.at(x, y) = old.at(x, y) * (1 - weight) + around * weight;
        }
}

// Rain now and then piles up a needle; none may stand out from the ground four pixels
// around it by more than a crag would.
void cutNeedles(HeightField &field)
{
    constexpr int Reach = 4;
    constexpr double Crag = 0.045;
    const HeightField old = field;
    const int last = field.side - 1;
    for (int y = 0; y < field.side; ++y)
        for (int x = 0; x < field.side; ++x) {
            const int west = std::max(x - Reach, 0), east = std::min(x + Reach, last);
            const int north = std::max(y - Reach, 0), south = std::min(y + Reach, last);
            const double around = (old.at(west, y) + old.at(east, y) + old.at(x, north) +
                                   old.at(x, south)) *
                                  0.25;
            field.at(x, y) = std::min(old.at(x, y), around + Crag);
        }
}

void normalize(HeightField &field)
{
    const auto [low, high] =
        std::minmax_element(field.heights.begin(), field.heights.end());
    const double lowest = *low;
    const double range = *high - lowest;
    for (double &h : field.heights)
        h = (h - lowest) / range;
}

double smoothStep(double from, double to, double v)
{
    const double t = std::clamp((v - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double rawHeight(double u, double v, unsigned seed)
{
    // Bent coordinates keep the crests from running straight.
    const double bendX = fractalNoise(u * 3, v * 3, 3, seed + 50) * 0.22;
    const double bendY = fractalNoise(u * 3, v * 3, 3, seed + 70) * 0.22;
    const double ridges = ridgedNoise(u * 3.1 + bendX, v * 3.1 + bendY, 7, seed);
    const double hills = fractalNoise(u * 5, v * 5, 5, seed + 20) * 0.5 + 0.5;
    // High range across the north, foothills and a valley floor to the south.
    const double range =
        smoothStep(1.05, 0.12, v + 0.25 * fractalNoise(u * 2, v * 2, 2, 9));
    return ridges * (0.25 + 1.15 * range) + hills * 0.16 + 0.1 * range;
}

} // namespace

double HeightField::sample(double x, double y) const
{
    const double limit = side - 1.001;
    return slopeAt(*this, std::clamp(x, 0.0, limit), std::clamp(y, 0.0, limit)).height;
}

HeightField makeMountains(int side, unsigned seed)
{
    HeightField field{side, std::vector<double>(std::size_t(side) * side)};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            field.at(x, y) = rawHeight(double(x) / side, double(y) / side, seed);
    normalize(field);
    // Low ground is pressed flat, summits stand out.
    for (double &h : field.heights)
        h = std::pow(h, 1.25);
    rain(field, side * side * 3 / 4, seed + 1);
    // What the rain cut into spires falls.
    for (int i = 0; i < 3; ++i)
        cutNeedles(field);
    for (int i = 0; i < 3; ++i)
        smooth(field, 0.5);
    normalize(field);
    return field;
}
