#pragma once

#include "base/result.h"
#include "flight/nurbs.h"
#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>

/// Whether a curved flight of so many points and frames can be flown, or why not.
[[nodiscard]] Result<void> checkCurvedFlight(qsizetype controlPoints, qsizetype waypoints,
                                             int frames);

/// Where the curves of a flight are in one frame.
struct CurvePoint {
    double x = 0.0, y = 0.0, z = 0.0; // world units
    double heading = 0.0;             // radians, from +y towards +x
    double pitch = 0.0;               // radians, positive upward
    double fraction = 0.0;            // share of the movement that is done, 0 to 1
};

/// The three curves of a flight, sampled once for all of its frames.
///
/// The position runs through the control net, heading and pitch through the
/// values of the waypoints, each curve over the whole of its own parameters.
class CurvedFlight {
public:
    /// Most frames that a movement has.
    static constexpr int MaxFrames = 32768;

    /// The flight must have passed checkCurvedFlight().
    CurvedFlight(const QList<ControlPoint> &controlPoints,
                 const QList<Waypoint> &waypoints, int frames);

    /// Before the first sample and past the last one the flight stands still.
    [[nodiscard]] CurvePoint point(int frame) const;

private:
    int m_frames;
    NURBS m_position;
    NURBS m_heading;
    NURBS m_pitch;
};
