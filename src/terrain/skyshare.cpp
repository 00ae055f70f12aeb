// The light of an even sky: over the azimuth of one direction the sky is free from an
// angle T above the horizontal on, and with the unit normal N, d the direction's
// horizontal unit vector,
//     integral from T to 90 degrees of (Nz sin t + (N . d) cos t) cos t dt
//   = Nz (cos T)^2 / 2 + (N . d) (90 degrees - T - sin T cos T) / 2
// after Dozier and Frew (1990), "Rapid calculation of terrain parameters for radiation
// modeling". The sum over all directions, over pi, is the share.

#include "terrain/skyshare.h"

#include "base/pi.h"
#include "base/workerpool.h"
#include "terrain/directions.h"
#include "terrain/shading.h"
#include "terrain/sloperows.h"

#include <array>

namespace {

// Slopes of a grid and what its cells see of the sky so far.
struct SkyGrid {
    Heights heights;
    std::vector<float> east, north; // slopes
    std::vector<float> share;

    [[nodiscard]] std::size_t place(int x, int y) const
    {
        return std::size_t(y) * std::size_t(heights.size.width()) + std::size_t(x);
    }
};

// One direction's part of the share.
struct SkyOfDirection {
    float east; // unit vector
    float north;
    float factor;

    // 90 degrees less the angle of a tangent that is not negative; within 0.00002.
    static float restOfAngle(float tangent)
    {
        const float t = tangent > 1.0f ? 1.0f / tangent : tangent;
        const float q = t * t;
        const float angle =
            t * (0.99997726f +
                 q * (-0.33262347f +
                      q * (0.19354346f +
                           q * (-0.11643287f + q * (0.05265332f + q * -0.01172120f)))));
        return tangent > 1.0f ? angle : 1.57079633f - angle;
    }

    // What lies behind the plane of the slope is as hidden as what lies behind ground.
    [[nodiscard]] float operator()(float slopeEast, float slopeNorth, float horizon) const
    {
        const float rise = slopeEast * east + slopeNorth * north;
        const float up =
            1.0f / std::sqrt(1.0f + slopeEast * slopeEast + slopeNorth * slopeNorth);
        const float tangent = std::max(std::max(horizon, rise), 0.0f);
        const float square = 1.0f / (1.0f + tangent * tangent); // of the cosine
        return factor * up * (square - rise * (restOfAngle(tangent) - tangent * square));
    }
};

bool readSlopes(const Ground &ground, SkyGrid &grid, WorkerPool &pool,
                const Stretch &stretch)
{
    grid.east.resize(ground.heights.metres.size());
    grid.north.resize(grid.east.size());
    return workOnPieces(pool, ground.heights.size.height(), 16, stretch,
                        [&](int first, int last) {
                            SlopeRows slopes(ground.heights, ground.cellX, ground.cellY);
                            const auto width = std::size_t(ground.heights.size.width());
                            for (int y = first; y < last; ++y)
                                slopes.read(y, grid.east.data() + std::size_t(y) * width,
                                            grid.north.data() + std::size_t(y) * width);
                        });
}

// Rows and columns exchanged, one array after the other for the sake of memory.
bool exchange(SkyGrid &grid, WorkerPool &pool, const Stretch &stretch)
{
    const QSize size = grid.heights.size;
    std::vector<float> exchanged;
    for (std::vector<float> *const cells :
         {&grid.heights.metres, &grid.east, &grid.north, &grid.share}) {
        if (!transpose(*cells, size, exchanged, pool, stretch))
            return false;
        cells->swap(exchanged);
    }
    grid.heights.size = size.transposed();
    return true;
}

// Gathers the cells of a sweep, so that the sums over them become vector code.
void addCells(const HorizonLines::Work &work, const SkyOfDirection &sky, SkyGrid &grid)
{
    constexpr int Block = 256;
    std::array<float, Block> east{}, north{}, horizon{};
    std::array<std::size_t, Block> place{};
    int count = 0;
    const auto flush = [&] {
        for (std::size_t i = 0; i < Block; ++i)
            horizon[i] = sky(east[i], north[i], horizon[i]);
        for (std::size_t i = 0; i < std::size_t(count); ++i)
            grid.share[place[i]] += horizon[i];
        count = 0;
    };
    for (int x = work.from; x < work.to; ++x) {
        const int y = work.row[std::size_t(x)];
        if (y < 0)
            continue;
        const auto i = std::size_t(count);
        place[i] = grid.place(x, y);
        east[i] = grid.east[place[i]];
        north[i] = grid.north[place[i]];
        horizon[i] = work.horizon[std::size_t(x)];
        if (++count == Block)
            flush();
    }
    flush();
}

bool addDirections(SkyGrid &grid, const Ground &ground, bool isTransposed,
                   WorkerPool &pool, const Stretch &stretch)
{
    for (int i = 0; i < SkyDirections; ++i) {
        // Between the points of the compass, so that half of them run along each axis.
        const double azimuth = (i + 0.5) * (2.0 * Pi / SkyDirections);
        const Direction direction = directionTo(azimuth, ground.cellX, ground.cellY);
        if (direction.isTransposed != isTransposed)
            continue;
        const SkyOfDirection sky{static_cast<float>(std::sin(azimuth)),
                                 static_cast<float>(std::cos(azimuth)),
                                 1.0f / SkyDirections};
        const auto take = [&](const HorizonLines::Work &work) {
            addCells(work, sky, grid);
        };
        const Stretch part =
            stretch.part(double(i) / SkyDirections, (i + 1.0) / SkyDirections);
        if (!sweepHorizon(grid.heights, direction, pool, part, take))
            return false;
    }
    return true;
}

} // namespace

bool skyShare(const Ground &ground, std::vector<float> &share, WorkerPool &pool,
              const Stretch &stretch)
{
    SkyGrid grid;
    grid.heights = ground.heights;
    grid.share.resize(ground.heights.metres.size());
    if (!readSlopes(ground, grid, pool, stretch.part(0.0, 0.02)) ||
        !addDirections(grid, ground, false, pool, stretch.part(0.02, 0.5)) ||
        !exchange(grid, pool, stretch.part(0.5, 0.5)) ||
        !addDirections(grid, ground, true, pool, stretch.part(0.5, 0.98)))
        return false;
    return transpose(grid.share, grid.heights.size, share, pool, stretch.part(0.98, 1.0));
}
