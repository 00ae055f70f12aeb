#include "flight/straightcamera.h"

#include "base/pi.h"
#include "scene/scenerydata.h"

#include <cmath>

namespace {

double radians(double degrees) { return degrees / 180 * Pi; }

// Straight down leaves no horizontal direction.
double offStraightDown(double pitch) { return pitch == -90.0 ? -89.999 : pitch; }

} // namespace

double smoothedValue(double t, double first, double last, double inertia)
{
    if (inertia == 0.0)
        return first + (last - first) * t;
    const double k = 1 / (1 - std::exp(-0.5 / inertia));
    const double u = 1 - t;
    const double s = t < 0.5 ? t * (1 - std::exp(-t / inertia)) * k
                             : 1 - u * (1 - std::exp(-u / inertia)) * k;
    return first + (last - first) * s;
}

FrameCamera straightCamera(const SceneryData &data, int frame, double qualityFactor)
{
    // Of the whole movement, so that a part of it renders the same frames.
    const double t = data.Bildanzahl < 2 ? 0.0 : frame / (data.Bildanzahl - 1.0);
    const auto at = [&](double first, double last) {
        return smoothedValue(t, first, last, data.Traegheit);
    };
    FrameCamera camera;
    camera.position = {at(data.BeobXA, data.BeobXE), at(data.BeobYA, data.BeobYE),
                       at(data.BeobZA, data.BeobZE), 1.0};
    camera.direction = radians(at(data.RichtungA, data.RichtungE));
    camera.pitch =
        radians(at(offStraightDown(data.NeigungA), offStraightDown(data.NeigungE)));
    camera.focal = at(data.BrennA, data.BrennE) * qualityFactor;
    camera.roll = radians(at(data.VerkantenA, data.VerkantenE));
    camera.zScale = at(data.HDateiSkalaZA, data.HDateiSkalaZE);
    camera.dustRange = data.NebelE != 0.0 ? at(data.NebelA, data.NebelE) : data.NebelA;
    return camera;
}
