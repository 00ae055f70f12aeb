#include "flight/pathcurve.h"

#include "base/truncate.h"
#include "flight/nurbs.h"
#include "scene/waypointlevel.h"

#include <algorithm>

namespace {

constexpr int Order = 4;

std::size_t unsignedSize(qsizetype n) { return static_cast<std::size_t>(n); }

} // namespace

int lastSample(int level) { return (2 << std::clamp(level, 0, MaxWaypointLevel)) * 60; }

std::vector<CurvePoint> sampleCurve(const std::vector<CurvePoint> &net, int level)
{
    std::vector<double> points;
    points.reserve(net.size() * 3);
    for (const CurvePoint &p : net)
        points.insert(points.end(), {p.u, p.v, 0.0});

    NURBS nurbs;
    const int count = static_cast<int>(net.size());
    const int samples = lastSample(level) + 1;
    nurbs.fill3D(count, 1, points.data());
    nurbs.rbspsurf(Order, Order, count, 1, samples, 1);

    std::vector<CurvePoint> curve(unsignedSize(samples));
    for (int i = 0; i < samples; ++i)
        curve[unsignedSize(i)] = {nurbs.getResultingSurface(3 * i, 0),
                                  nurbs.getResultingSurface(3 * i, 1)};
    return curve;
}

QList<QPoint> roundedCurve(const std::vector<CurvePoint> &curve)
{
    QList<QPoint> points;
    points.reserve(static_cast<qsizetype>(curve.size()));
    for (const CurvePoint &p : curve)
        points.append({truncatedPlusHalf(p.u), truncatedPlusHalf(p.v)});
    return points;
}

std::vector<CurvePoint> planNet(const QList<ControlPoint> &controlPoints)
{
    std::vector<CurvePoint> net;
    net.reserve(unsignedSize(controlPoints.size()));
    for (const ControlPoint &p : controlPoints)
        net.push_back({double(p.x), double(p.y)});
    return net;
}

std::vector<CurvePoint> profileNet(const QList<ControlPoint> &controlPoints)
{
    std::vector<CurvePoint> net;
    net.reserve(unsignedSize(controlPoints.size()));
    for (const ControlPoint &p : controlPoints)
        net.push_back({p.i, double(p.z)});
    return net;
}
