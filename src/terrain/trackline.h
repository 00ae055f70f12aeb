#pragma once

#include "terrain/sceneryworld.h"
#include "terrain/track.h"

#include <vector>

/// A place of a track in the world of a scenery.
struct LinePoint {
    double x = 0.0; ///< world units
    double y = 0.0;
    double metres = 0.0; ///< height above the sea, where the line has heights
};

/// A track as a line in the world of a scenery.
struct TrackLine {
    std::vector<LinePoint> points; ///< without those that stand still
    std::vector<LinePoint> all;    ///< with them
    std::vector<std::size_t>
        nearest; ///< of `points` to each of `all`, at most one behind
    bool hasHeights = false;
    qint64 cut = 0;     ///< points ahead of the terrain and behind it, left out
    qint64 outside = 0; ///< others that lie outside of it
};

/// The line of a track from where it first comes to the terrain to where it last leaves
/// it, without points that stand at the same place as the one before. Heights that are
/// missing at some points are interpolated. Fails where no two places are left.
[[nodiscard]] Result<TrackLine> lineOfTrack(const Track &track, const SceneryWorld &world,
                                            const ElevationImage &ground);

/// The line at `count` places, evenly along its length; the first and the last are its
/// ends.
[[nodiscard]] std::vector<LinePoint> evenly(const std::vector<LinePoint> &line,
                                            int count);
