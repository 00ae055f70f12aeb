#pragma once

#include "scene/controlpoint.h"
#include "scene/scenerydata.h"
#include "scene/sceneryextras.h"
#include "scene/waypoint.h"

#include <QList>

/// All that a scenery file holds: a value, to be compared, copied and kept.
struct SceneryDocument {
    SceneryData parameters;
    QList<ControlPoint> controlPoints;
    QList<Waypoint> waypoints;
    int waypointLevel = 0; // of the list of waypoints, see normalizeWaypoints()
    SceneryExtras extras;

    bool operator==(const SceneryDocument &) const = default;
};
