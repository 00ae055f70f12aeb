#pragma once

#include "scene/controlpoint.h"
#include "scene/waypointlevel.h"

#include <QList>
#include <QPoint>
#include <QPointF>

// What the plan editor does to a path, in plan coordinates: texture pixels with y
// running upward from 0 on the bottom row.

/// Length of a direction handle.
constexpr int HandleLength = 40;
/// Height of a new control point and waypoint.
constexpr int NewPointHeight = 100;

/// The first control point within 10 pixels, or -1.
[[nodiscard]] int controlPointAt(const QList<ControlPoint> &controlPoints, int x, int y);

/// The direction of a handle on the screen, where y runs downward: x and y are its
/// parts along plan x and against plan y.
[[nodiscard]] QPointF handleDirection(double heading);
/// The first waypoint whose direction handle ends within 5 pixels, or -1.
[[nodiscard]] int directionHandleAt(const QList<Waypoint> &waypoints, int x, int y);

/// Turns a waypoint towards a place; false, and no change, where it stands on it.
bool turnTowards(Waypoint &waypoint, int x, int y);
/// Turns all waypoints towards a place.
void focusHeadings(QList<Waypoint> &waypoints, int x, int y);
/// Turns all waypoints along the curve of the control points.
void headAlongCurve(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                    int level);

/// Moves the waypoints onto the curve in the plan, which adds missing ones at the
/// end, and gives the curve's samples. Without 4 control points it does nothing.
QList<QPoint> updatePlan(const QList<ControlPoint> &controlPoints,
                         QList<Waypoint> &waypoints, int level);

/// Brings a list up to all but the last waypoint of its level, or empties it where
/// there are fewer than 4 control points.
void fitWaypoints(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                  int level);
/// Doubles the waypoints: a new one half way between each two.
void doubleWaypoints(QList<Waypoint> &waypoints, int &level);
/// Takes every second waypoint away.
void halveWaypoints(QList<Waypoint> &waypoints, int &level);

/// Adds full turns to headings and pitches until each is as near to the one before
/// as it can be, so that the spline over them turns the short way round.
void harmonizeAngles(QList<Waypoint> &waypoints);
