#include "flight/flightplan.h"

#include "base/pi.h"
#include "base/truncate.h"
#include "flight/pathcurve.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double ControlPointRadius = 10.0;
constexpr double HandleRadius = 5.0;
// Full turns that the unwrapping tries in each direction.
constexpr int MostTurns = 25;

// In doubles: the difference of two coordinates may need 33 bits, its square 66.
bool isWithin(double dx, double dy, double radius)
{
    return dx * dx + dy * dy <= radius * radius;
}

qint32 middle(qint32 a, qint32 b)
{
    return static_cast<qint32>((qint64(a) + b) / 2); // truncates toward zero
}

Waypoint between(const Waypoint &left, const Waypoint &right)
{
    return {middle(left.x, right.x), middle(left.y, right.y), middle(left.z, right.z),
            (left.a + right.a) * 0.5, (left.p + right.p) * 0.5};
}

// All but the last waypoint of a level, which the next repaint adds.
int listedWaypoints(int level) { return waypointCount(level) - 1; }

void unwrap(QList<Waypoint> &waypoints, double Waypoint::*angle)
{
    for (qsizetype i = 1; i < waypoints.size(); ++i) {
        const double before = waypoints.at(i - 1).*angle;
        double &value = waypoints[i].*angle;
        double best = 10000.0;
        double turn = 0.0;
        for (int k = -MostTurns; k <= MostTurns; ++k) {
            const double offset = 2 * k * Pi;
            const double difference = std::abs(value + offset - before);
            if (difference < best) {
                best = difference;
                turn = offset;
            }
        }
        value += turn;
    }
}

} // namespace

int controlPointAt(const QList<ControlPoint> &controlPoints, int x, int y)
{
    for (qsizetype i = 0; i < controlPoints.size(); ++i) {
        const ControlPoint &p = controlPoints.at(i);
        if (isWithin(double(x) - p.x, double(y) - p.y, ControlPointRadius))
            return static_cast<int>(i);
    }
    return -1;
}

QPointF handleDirection(double heading)
{
    return {std::cos(heading - Pi / 2), std::sin(heading - Pi / 2)};
}

int directionHandleAt(const QList<Waypoint> &waypoints, int x, int y)
{
    for (qsizetype i = 0; i < waypoints.size(); ++i) {
        const Waypoint &w = waypoints.at(i);
        const QPointF direction = handleDirection(w.a);
        const double hx = w.x + HandleLength * direction.x();
        const double hy = w.y - HandleLength * direction.y();
        if (isWithin(x - hx, y - hy, HandleRadius))
            return static_cast<int>(i);
    }
    return -1;
}

bool turnTowards(Waypoint &waypoint, int x, int y)
{
    const double dx = double(x) - waypoint.x;
    const double dy = double(y) - waypoint.y;
    if (dx == 0.0 && dy == 0.0)
        return false;
    waypoint.a = std::atan2(dx, dy);
    return true;
}

void focusHeadings(QList<Waypoint> &waypoints, int x, int y)
{
    for (Waypoint &waypoint : waypoints)
        turnTowards(waypoint, x, y);
}

void headAlongCurve(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                    int level)
{
    if (controlPoints.size() < CurveMinimum)
        return;
    forEachStep(waypoints, sampleCurve(planNet(controlPoints), level),
                [](Waypoint &waypoint, const CurvePoint &from, const CurvePoint &to) {
                    waypoint.a = std::atan2(to.u - from.u, to.v - from.v);
                });
}

QList<QPoint> updatePlan(const QList<ControlPoint> &controlPoints,
                         QList<Waypoint> &waypoints, int level)
{
    if (controlPoints.size() < CurveMinimum)
        return {};
    QList<QPoint> curve = roundedCurve(sampleCurve(planNet(controlPoints), level));
    for (qsizetype k = 0; k * SamplesPerWaypoint < curve.size(); ++k) {
        const QPoint at = curve.at(k * SamplesPerWaypoint);
        if (k < waypoints.size()) {
            waypoints[k].x = at.x();
            waypoints[k].y = at.y();
        } else {
            waypoints.append({at.x(), at.y(), NewPointHeight, 0.0, 0.0});
        }
    }
    return curve;
}

void fitWaypoints(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                  int level)
{
    if (controlPoints.size() < CurveMinimum) {
        waypoints.clear();
        return;
    }
    while (waypoints.size() < listedWaypoints(level))
        waypoints.append({0, 0, NewPointHeight, 0.0, 0.0});
}

void doubleWaypoints(QList<Waypoint> &waypoints, int &level)
{
    level = std::min(level + 1, MaxWaypointLevel);
    while (waypoints.size() < 3)
        waypoints.append(Waypoint());
    const int n = listedWaypoints(level);
    // A list that is not complete ends before n; the next repaint completes it.
    for (qsizetype i = 1; i < n && i < waypoints.size(); i += 2)
        waypoints.insert(i, between(waypoints.at(i - 1), waypoints.at(i)));
}

void halveWaypoints(QList<Waypoint> &waypoints, int &level)
{
    level = std::max(level - 1, 0);
    const int n = listedWaypoints(level);
    for (qsizetype i = 1; i <= n && i < waypoints.size(); ++i)
        waypoints.removeAt(i);
}

void harmonizeAngles(QList<Waypoint> &waypoints)
{
    unwrap(waypoints, &Waypoint::a);
    unwrap(waypoints, &Waypoint::p);
}
