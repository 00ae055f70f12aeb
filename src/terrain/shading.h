#pragma once

#include "base/result.h"
#include "terrain/heights.h"
#include "terrain/terrainrequest.h"

#include <vector>

class WorkerPool;
struct Stretch;

/// How much brighter than open flat ground each cell is, row by row southward.
struct LightMap {
    QSize size;
    std::vector<float> light; ///< 1 as flat ground under the open sky and a high sun

    [[nodiscard]] const float *row(int y) const
    {
        return light.data() + std::size_t(y) * std::size_t(size.width());
    }
    [[nodiscard]] float *row(int y)
    {
        return light.data() + std::size_t(y) * std::size_t(size.width());
    }
};

/// Ground that light falls on: heights without voids, cells in metres.
struct Ground {
    const Heights &heights;
    double cellX = 1.0;
    double cellY = 1.0;
};

/// Directions in which the horizon is sought for the light of the sky.
constexpr int SkyDirections = 16;

/// Light for a texture. Of the light of flat ground 0.3 comes from the sky and 0.7 from
/// the sun: L = 0.3 S + 0.7 v max(0, N . D) / max(sin H, sin 20 degrees), N the ground's
/// normal, D the way to the sun at the height H (Lambert's law). What is above 1 counts
/// by half, so that bright colours keep their differences.
///
/// v is the visible share of the sun's disc over the horizon in its direction (1 without
/// shadows); S the share of the open sky, each direction counting by its cosine to the
/// normal (1 without the light of the sky): open flat ground 1, an open slope
/// (1 + cos) / 2. Needs a `light` other than None. Fails only where it is stopped.
[[nodiscard]] Result<LightMap> bakeLight(const Ground &ground,
                                         const TextureRequest &request, WorkerPool &pool,
                                         const Stretch &stretch);
