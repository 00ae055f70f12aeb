#pragma once

#include <QtGlobal>

class QTextStream;

/// A point on the path of a curved flight; carries the viewing direction.
class Waypoint {
public:
    Waypoint() = default;
    Waypoint(qint32 px, qint32 py, qint32 pz, double heading, double pitch)
        : x(px), y(py), z(pz), a(heading), p(pitch)
    {
    }

    /// The five lines of the scenery file.
    void write(QTextStream &stream, int index) const;

    bool operator==(const Waypoint &) const = default;

    qint32 x = 0;   // texture pixels from the left
    qint32 y = 0;   // texture pixels from the bottom row, upward
    qint32 z = 0;   // height, taken from the profile curve
    double i = 0.0; // station along the profile
    double a = 0.0; // heading in radians from +y towards +x, not normalised
    double p = 0.0; // pitch in radians, positive upward
};
