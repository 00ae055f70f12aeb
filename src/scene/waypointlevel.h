#pragma once

#include "scene/waypoint.h"

#include <QList>

/// Highest doubling level of a waypoint list.
constexpr int MaxWaypointLevel = 5;

/// Entries of a complete waypoint list: 7, 13, 25, 49, 97, 193 for levels 0 to 5.
[[nodiscard]] constexpr int waypointCount(int level) { return 3 * (2 << level) + 1; }

/// Cuts a list down to the longest complete one and gives its level; a list of
/// fewer than 7 entries, and one of fewer than 4 control points, is emptied.
[[nodiscard]] int normalizeWaypoints(QList<Waypoint> &waypoints, int controlPointCount);
