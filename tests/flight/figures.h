#pragma once

#include "base/pi.h"
#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>
#include <QPoint>

#include <cmath>
#include <limits>

/// Figures and comparisons that the tests of the flight path share.
constexpr qint32 Most = std::numeric_limits<qint32>::max();
constexpr qint32 Least = std::numeric_limits<qint32>::min();

inline bool near(double a, double b, double allowed = 1e-9)
{
    return std::abs(a - b) < allowed;
}

inline QPoint placeOf(const Waypoint &w) { return {w.x, w.y}; }
inline QPoint placeOf(const ControlPoint &p) { return {p.x, p.y}; }

/// One Bezier segment: x = 80 (3t^2 - 2t^3), y = 240 t (1 - t).
inline QList<ControlPoint> square()
{
    return {{0, 0, 100, 0.0}, {0, 80, 120, 0.0}, {80, 80, 140, 0.0}, {80, 0, 180, 0.0}};
}
