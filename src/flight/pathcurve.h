#pragma once

#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>
#include <QPoint>

#include <vector>

/// Samples of a path's curve from one waypoint to the next.
constexpr int SamplesPerWaypoint = 20;
/// Fewest control points that make a curve.
constexpr qsizetype CurveMinimum = 4;

/// A point of one of the two views of a path: x and y of the plan, or station and
/// height of the profile.
struct CurvePoint {
    double u = 0.0, v = 0.0;
};

/// Number of the last sample of a path's curve; the first is 0.
[[nodiscard]] int lastSample(int level);

/// The curve over a net of at least 4 points at lastSample(level) + 1 samples.
///
/// Both views sample their curves at the same parameters, which is what makes
/// sample 20 * k the waypoint k in both.
[[nodiscard]] std::vector<CurvePoint> sampleCurve(const std::vector<CurvePoint> &net,
                                                  int level);

/// The samples on whole pixels.
[[nodiscard]] QList<QPoint> roundedCurve(const std::vector<CurvePoint> &curve);

/// Nets of the two views.
[[nodiscard]] std::vector<CurvePoint> planNet(const QList<ControlPoint> &controlPoints);
[[nodiscard]] std::vector<CurvePoint>
profileNet(const QList<ControlPoint> &controlPoints);

/// Calls set(waypoint, from, to) for each waypoint with the two samples that follow
/// each other there; the last waypoint takes the last two.
template <typename Set>
void forEachStep(QList<Waypoint> &waypoints, const std::vector<CurvePoint> &curve,
                 Set set)
{
    const qsizetype last =
        (static_cast<qsizetype>(curve.size()) - 1) / SamplesPerWaypoint;
    for (qsizetype k = 0; k < std::min(last, waypoints.size()); ++k) {
        const std::size_t at = static_cast<std::size_t>(k * SamplesPerWaypoint);
        set(waypoints[k], curve[at], curve[at + 1]);
    }
    if (last < waypoints.size())
        set(waypoints[last], curve[curve.size() - 2], curve[curve.size() - 1]);
}
