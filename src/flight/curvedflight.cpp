#include "flight/curvedflight.h"

#include "base/pi.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

constexpr int Order = 4;

QString text(const char *source)
{
    return QCoreApplication::translate("SceneryDelegate", source);
}

using Net = std::vector<double>;

template <typename Point, typename Third>
Net netOf(const QList<Point> &points, Third Point::*third)
{
    Net net;
    net.reserve(static_cast<std::size_t>(points.size()) * 3);
    for (const Point &point : points)
        net.insert(net.end(), {double(point.x), double(point.y), double(point.*third)});
    return net;
}

void sample(NURBS &curve, const Net &net, int samples)
{
    const int count = static_cast<int>(net.size() / 3);
    curve.fill3D(count, 1, net.data());
    curve.rbspsurf(Order, Order, count, 1, samples, 1);
}

// A viewing direction that was tilted down past the vertical looks back.
double foldedPitch(double pitch) { return pitch < -Pi / 2 ? -Pi - pitch : pitch; }

} // namespace

Result<void> checkCurvedFlight(qsizetype controlPoints, qsizetype waypoints, int frames)
{
    if (controlPoints < 4)
        return failed(text("The number of control points is %1; it has to be greater "
                           "than 3.\n")
                          .arg(controlPoints));
    if (waypoints < 7)
        return failed(
            text("The number of waypoints is %1; it has to be greater than 6.\n")
                .arg(waypoints));
    if (frames <= 1)
        return failed(
            text("The total number of frames is %1, has to be greater than 1.\n")
                .arg(frames));
    return {};
}

CurvedFlight::CurvedFlight(const QList<ControlPoint> &controlPoints,
                           const QList<Waypoint> &waypoints, int frames)
    : m_frames(std::clamp(frames, 2, MaxFrames))
{
    // One sample more than frames: the movement ends one step before the net does.
    const int samples = m_frames + 1;
    sample(m_position, netOf(controlPoints, &ControlPoint::z), samples);
    sample(m_heading, netOf(waypoints, &Waypoint::a), samples);
    sample(m_pitch, netOf(waypoints, &Waypoint::p), samples);
}

CurvePoint CurvedFlight::point(int frame) const
{
    const int held = std::clamp(frame, 0, m_frames);
    const int index = 3 * held;
    CurvePoint point;
    point.x = m_position.getResultingSurface(index, 0);
    point.y = m_position.getResultingSurface(index, 1);
    point.z = m_position.getResultingSurface(index, 2);
    point.heading = m_heading.getResultingSurface(index, 2);
    point.pitch = foldedPitch(m_pitch.getResultingSurface(index, 2));
    // Against the last frame, not the last sample: the sample behind the last frame
    // lies a little beyond 1.
    point.fraction = static_cast<double>(index) / (static_cast<double>(m_frames - 1) * 3);
    return point;
}
