#pragma once

#include <QtGlobal>

class QTextStream;

/// A point of the control net of a curved flight.
class ControlPoint {
public:
    ControlPoint() = default;
    ControlPoint(qint32 px, qint32 py, qint32 pz, double station)
        : x(px), y(py), z(pz), i(station)
    {
    }

    /// The one line of the scenery file; the station is not stored.
    void write(QTextStream &stream, int index) const;

    bool operator==(const ControlPoint &) const = default;

    qint32 x = 0;   // texture pixels from the left
    qint32 y = 0;   // texture pixels from the bottom row, upward
    qint32 z = 0;   // camera height
    double i = 0.0; // station: length of the control polygon up to here, in the plan
};
