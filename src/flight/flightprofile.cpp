#include "flight/flightprofile.h"

#include "base/pi.h"

#include <cmath>

namespace {

constexpr double ControlPointRadius = 10.0;
constexpr double HandleRadius = 5.0;

bool isWithin(double ds, double dh, double radius)
{
    return ds * ds + dh * dh <= radius * radius;
}

// Distance in the plan. Doubles hold the squares of all distances that 32 bits do,
// and do not run over with the others.
template <typename Point> double distance(const Point &from, const Point &to)
{
    const double dx = double(to.x) - from.x;
    const double dy = double(to.y) - from.y;
    return std::sqrt(dx * dx + dy * dy);
}

template <typename Point> void addUpStations(QList<Point> &points)
{
    for (qsizetype k = 0; k < points.size(); ++k)
        points[k].i =
            k == 0 ? 0.0 : points.at(k - 1).i + distance(points.at(k - 1), points.at(k));
}

// Level along the path is 0, straight up a quarter turn.
double pitchOf(double ds, double dh) { return std::atan2(ds, -dh) - Pi / 2; }

} // namespace

HeightExtent heightExtent(const QList<ControlPoint> &controlPoints,
                          const std::vector<TerrainPoint> &terrain)
{
    HeightExtent extent;
    for (const ControlPoint &p : controlPoints)
        extent.include(p.z);
    for (const TerrainPoint &p : terrain)
        extent.include(p.height);
    return extent;
}

qint32 updateStations(QList<ControlPoint> &controlPoints)
{
    addUpStations(controlPoints);
    return controlPoints.size() < 2 ? 0 : truncatedPlusHalf(controlPoints.constLast().i);
}

void updateStations(QList<Waypoint> &waypoints) { addUpStations(waypoints); }

QList<QPoint> updateProfile(const QList<ControlPoint> &controlPoints,
                            QList<Waypoint> &waypoints, int level)
{
    if (controlPoints.size() < CurveMinimum)
        return {};
    QList<QPoint> curve = roundedCurve(sampleCurve(profileNet(controlPoints), level));
    for (qsizetype k = 0; k * SamplesPerWaypoint < curve.size(); ++k) {
        const QPoint at = curve.at(k * SamplesPerWaypoint);
        if (k >= waypoints.size())
            waypoints.append(Waypoint());
        waypoints[k].i = at.x();
        waypoints[k].z = at.y();
    }
    return curve;
}

int profilePointAt(const QList<ControlPoint> &controlPoints, int station, int height)
{
    for (qsizetype i = 0; i < controlPoints.size(); ++i) {
        const ControlPoint &p = controlPoints.at(i);
        if (isWithin(station - p.i, double(height) - p.z, ControlPointRadius))
            return static_cast<int>(i);
    }
    return -1;
}

int pitchHandleAt(const QList<Waypoint> &waypoints, int handleLength, int station,
                  int height)
{
    for (qsizetype i = 0; i < waypoints.size(); ++i) {
        const Waypoint &w = waypoints.at(i);
        const double ds = station - (w.i + handleLength * std::cos(w.p));
        const double dh = height - (w.z + handleLength * std::sin(w.p));
        if (isWithin(ds, dh, HandleRadius))
            return static_cast<int>(i);
    }
    return -1;
}

bool tiltTowards(Waypoint &waypoint, int station, int height)
{
    const double ds = double(station) - truncatedPlusHalf(waypoint.i);
    const double dh = double(height) - waypoint.z;
    if (ds == 0.0 && dh == 0.0)
        return false;
    waypoint.p = pitchOf(ds, dh);
    return true;
}

void focusPitches(QList<Waypoint> &waypoints, int station, int height)
{
    for (Waypoint &waypoint : waypoints)
        tiltTowards(waypoint, station, height);
}

void pitchAlongCurve(const QList<ControlPoint> &controlPoints, QList<Waypoint> &waypoints,
                     int level)
{
    if (controlPoints.size() < CurveMinimum)
        return;
    forEachStep(waypoints, sampleCurve(profileNet(controlPoints), level),
                [](Waypoint &waypoint, const CurvePoint &from, const CurvePoint &to) {
                    waypoint.p = pitchOf(to.u - from.u, to.v - from.v);
                });
}
