#pragma once

#include "base/progress.h"
#include "terrain/trackline.h"

#include <QStringList>

/// Where the heights of a path come from.
enum class PathHeights {
    Known, ///< the track's where it has some, else the ground's
    Track,
    Ground,
};

struct TrackPathOptions {
    static constexpr int FewestPoints = 4;
    static constexpr int MostPoints = 200;

    int points = 40; ///< most control points
    PathHeights heights = PathHeights::Known;
    /// Metres above the ground that no frame is below; where the heights are the track's,
    /// only if it is given.
    std::optional<double> clearance;
    double usualClearance = 100.0; ///< above the ground, where none is given
    int frames = 300;
};

/// A curved flight along a track.
struct TrackPath {
    QList<ControlPoint> controlPoints;
    QList<Waypoint> waypoints;
    int waypointLevel = 0;
    int frames = 0;
    double greatestDistance = 0.0; ///< metres, in the plan, of the track from the path
    bool hasTrackHeights = false;
    QStringList notes; ///< sentences on what was cut or raised
};

/// The flight along a track: at most as many control points as are asked for, fewer where
/// these lie as near to it as whole coordinates can, with the view along the path.
/// Heights are rounded up. A ground without a reference system takes tracks that have
/// none either: they share their coordinates. Fails where the track does not come near
/// the terrain, or lacks heights that are asked for.
[[nodiscard]] Result<TrackPath> pathAlong(const Track &track,
                                          const SceneryDocument &document,
                                          const SceneryGround &ground,
                                          const TrackPathOptions &options,
                                          Progress &progress);

/// Makes a path the flight of a scenery, from its first to its last frame.
void flyAlong(SceneryDocument &document, const TrackPath &path);
