#pragma once

#include "base/truncate.h"
#include "flight/pathcurve.h"
#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>
#include <QPoint>

#include <vector>

// What the profile editor does to a path: the station runs along the control polygon
// in the plan, the height upward.

/// A place of the terrain under the control polygon.
struct TerrainPoint {
    double station = 0.0;
    double height = 0.0;
};

/// Lowest and highest whole height that a profile shows.
struct HeightExtent {
    qint32 lowest = 1000000;
    qint32 highest = -1000000;

    /// Widens the extent to hold a height.
    void include(double height)
    {
        if (height > highest)
            highest = truncatedOrNearest(height);
        if (height < lowest)
            lowest = truncatedOrNearest(height);
    }
};

/// Steps of the terrain line along each segment of the control polygon.
constexpr int TerrainSteps = 100;

/// The terrain along the control polygon, between stations that are up to date;
/// `heightAt(x, y)` gives its height at a place of the plan.
template <typename HeightAt>
[[nodiscard]] std::vector<TerrainPoint>
terrainUnder(const QList<ControlPoint> &controlPoints, HeightAt heightAt)
{
    std::vector<TerrainPoint> terrain;
    for (qsizetype k = 1; k < controlPoints.size(); ++k) {
        const ControlPoint &from = controlPoints.at(k - 1);
        const ControlPoint &to = controlPoints.at(k);
        const double dx = double(to.x) - from.x;
        const double dy = double(to.y) - from.y;
        for (int j = 0; j < TerrainSteps; ++j)
            terrain.push_back({from.i + j * (to.i - from.i) / TerrainSteps,
                               heightAt(from.x + j * dx / TerrainSteps,
                                        from.y + j * dy / TerrainSteps)});
    }
    return terrain;
}

/// The extent of the control points and of the terrain under them.
[[nodiscard]] HeightExtent heightExtent(const QList<ControlPoint> &controlPoints,
                                        const std::vector<TerrainPoint> &terrain);

/// Rewrites the stations of the control points; gives the length of the profile.
qint32 updateStations(QList<ControlPoint> &controlPoints);
/// Rewrites the stations of the waypoints from their places in the plan, as they
/// stand until the next updateProfile().
void updateStations(QList<Waypoint> &waypoints);

/// Moves the waypoints onto the curve in the profile, which adds missing ones at the
/// end, and gives the curve's samples. Without 4 control points it does nothing.
QList<QPoint> updateProfile(const QList<ControlPoint> &controlPoints,
                            QList<Waypoint> &waypoints, int level);

/// The first control point within 10 units, or -1.
[[nodiscard]] int profilePointAt(const QList<ControlPoint> &controlPoints, int station,
                                 int height);
/// The first waypoint whose pitch handle ends within 5 units, or -1.
[[nodiscard]] int pitchHandleAt(const QList<Waypoint> &waypoints, int handleLength,
                                int station, int height);

/// Tilts a waypoint towards a place; false, and no change, where it stands on it.
bool tiltTowards(Waypoint &waypoint, int station, int height);
/// Tilts all waypoints towards a place.
void focusPitches(QList<Waypoint> &waypoints, int station, int height);
/// Tilts all waypoints along the curve of the control points.
void pitchAlongCurve(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                     int level);
