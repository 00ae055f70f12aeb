// The light of an even sky: over the azimuth of one direction the sky is free from an
// angle T above the horizontal on, and with the unit normal N, d the direction's
// horizontal unit vector,
//     integral from T to 90 degrees of (Nz sin t + (N . d) cos t) cos t dt
//   = Nz (cos T)^2 / 2 + (N . d) (90 degrees - T - sin T cos T) / 2
// after Dozier and Frew (1990), "Rapid calculation of terrain parameters for radiation
// modeling". The sum over all directions, over pi, is the share.

#include "terrain/skyshare.h"

#include "base/alsowide.h"
#include "base/pi.h"
#include "base/workerpool.h"
#include "terrain/directions.h"
#include "terrain/shading.h"
#include "terrain/sloperows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace {

// Slopes of a grid and what its cells see of the sky so far.
struct SkyGrid {
    SkyGrid(const QSize &size, bool isExchanged)
        : heights(size, isExchanged), east(size, isExchanged), north(size, isExchanged),
          share(size, isExchanged)
    {
    }
    CellStrips heights;
    CellStrips east, north; // slopes
    CellStrips share;
};

// One direction's part of the share.
struct SkyOfDirection {
    float east; // unit vector
    float north;
    float factor;

    // 90 degrees less the angle of a tangent that is not negative; within 0.00002.
    // Without branches, as vector code has none.
    static float restOfAngle(float tangent)
    {
        const float t = std::min(tangent, 1.0f / tangent);
        const float q = t * t;
        const float angle =
            t * (0.99997726f +
                 q * (-0.33262347f +
                      q * (0.19354346f +
                           q * (-0.11643287f + q * (0.05265332f + q * -0.01172120f)))));
        const float rest = 1.57079633f - angle;
        return tangent > 1.0f ? angle : rest;
    }

    // What lies behind the plane of the slope is as hidden as what lies behind ground.
    [[nodiscard]] float operator()(float slopeEast, float slopeNorth, float horizon) const
    {
        const float rise = slopeEast * east + slopeNorth * north;
        const float up =
            1.0f / std::sqrt(1.0f + slopeEast * slopeEast + slopeNorth * slopeNorth);
        // In this order, which makes 0 of -0 too.
        const float tangent = std::max(0.0f, std::max(horizon, rise));
        const float square = 1.0f / (1.0f + tangent * tangent); // of the cosine
        return factor * up * (square - rise * (restOfAngle(tangent) - tangent * square));
    }
};

ALSO_WIDE
void shareOfCells(const SkyOfDirection &sky, const float *__restrict east,
                  const float *__restrict north, const float *__restrict horizon,
                  int count, float *__restrict share)
{
    const SkyOfDirection from = sky;
    for (int i = 0; i < count; ++i)
        share[i] = from(east[i], north[i], horizon[i]);
}

bool readSlopes(const Ground &ground, SkyGrid &grid, WorkerPool &pool,
                const Stretch &stretch)
{
    const auto width = std::size_t(ground.heights.size.width());
    const auto read = [&](int first, int last) {
        SlopeRows slopes(ground.heights, ground.cellX, ground.cellY);
        std::vector<float> east(std::size_t(last - first) * width), north(east);
        for (int y = first; y < last; ++y) {
            const std::size_t row = std::size_t(y - first) * width;
            slopes.read(y, &east[row], &north[row]);
        }
        grid.east.put(first, last, east.data());
        grid.north.put(first, last, north.data());
    };
    return workOnPieces(pool, ground.heights.size.height(), CellStrips::Width, stretch,
                        read);
}

// `isFirst`: the cells hold no share yet.
void addCells(const SkyOfDirection &sky, const HorizonLines::Walk &walk, bool isFirst,
              SkyGrid &grid)
{
    constexpr int Most = HorizonLines::LinesOfBlock;
    std::array<float, Most> east, north, share;
    const int count = walk.count();
    grid.east.copy(walk.column(), walk.row(), count, east.data());
    grid.north.copy(walk.column(), walk.row(), count, north.data());
    shareOfCells(sky, east.data(), north.data(), walk.horizon(), count, share.data());
    grid.share.forParts(walk.column(), walk.row(), count,
                        [&share, isFirst](float *cells, int first, int n) {
                            const float *const more = share.data() + first;
                            if (isFirst)
                                std::copy_n(more, n, cells);
                            else
                                std::transform(more, more + n, cells, cells,
                                               std::plus<>());
                        });
}

// Directions along the columns, or along the rows.
bool addDirections(SkyGrid &grid, const Ground &ground, bool isExchanged,
                   WorkerPool &pool, const Stretch &stretch)
{
    bool isFirst = true;
    for (int i = 0; i < SkyDirections; ++i) {
        // Between the points of the compass, so that half of them run along each axis.
        const double azimuth = (i + 0.5) * (2.0 * Pi / SkyDirections);
        const Direction direction = directionTo(azimuth, ground.cellX, ground.cellY);
        if (direction.isExchanged != isExchanged)
            continue;
        const SkyOfDirection sky{static_cast<float>(std::sin(azimuth)),
                                 static_cast<float>(std::cos(azimuth)),
                                 1.0f / SkyDirections};
        const auto take = [&](const HorizonLines::Walk &walk) {
            addCells(sky, walk, isFirst, grid);
        };
        const Stretch part =
            stretch.part(double(i) / SkyDirections, (i + 1.0) / SkyDirections);
        if (!sweepHorizon(grid.heights, direction, pool, part, take))
            return false;
        isFirst = false;
    }
    return true;
}

// What the directions along one axis give, added to `share`.
bool addAxis(const Ground &ground, bool isExchanged, std::vector<float> &share,
             WorkerPool &pool, const Stretch &stretch)
{
    const QSize size = ground.heights.size;
    SkyGrid grid(size, isExchanged);
    const auto add = [&](int first, int last) {
        std::vector<float> more(std::size_t(last - first) * std::size_t(size.width()));
        grid.share.take(first, last, more.data());
        float *const to = share.data() + std::size_t(first) * std::size_t(size.width());
        std::transform(more.begin(), more.end(), to, to, std::plus<>());
    };
    return putHeights(ground.heights, grid.heights, pool, stretch.part(0.0, 0.02)) &&
           readSlopes(ground, grid, pool, stretch.part(0.02, 0.05)) &&
           addDirections(grid, ground, isExchanged, pool, stretch.part(0.05, 0.97)) &&
           workOnPieces(pool, size.height(), CellStrips::Width, stretch.part(0.97, 1.0),
                        add);
}

} // namespace

bool skyShare(const Ground &ground, std::vector<float> &share, WorkerPool &pool,
              const Stretch &stretch)
{
    share.assign(ground.heights.metres.size(), 0.0f);
    return addAxis(ground, false, share, pool, stretch.part(0.0, 0.5)) &&
           addAxis(ground, true, share, pool, stretch.part(0.5, 1.0));
}
