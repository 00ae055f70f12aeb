#include "live/flyer.h"

#include "base/pi.h"
#include "scene/fieldlimits.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double FastFactor = 5.0;
constexpr double ANotch = 1.1; // of the focal length
constexpr double SpeedANotch = 1.25;
constexpr double SteepestPitch = 90.0;
constexpr double FullTurn = 360.0;

double radians(double degrees) { return degrees / 180 * Pi; }

// 0 to below 360.
double turned(double heading)
{
    const double rest = std::fmod(heading, FullTurn);
    return rest < 0 ? rest + FullTurn : rest;
}

double onStepsOf(double SceneryData::*field, double value)
{
    for (const RealLimits &limits : realLimits()) {
        if (limits.field != field)
            continue;
        const double steps = std::pow(10.0, limits.decimals);
        return std::clamp(std::round(value * steps) / steps, limits.lowest,
                          limits.highest);
    }
    return value;
}

} // namespace

void Flyer::setSpeed(double speed) { m_speed = std::clamp(speed, LeastSpeed, MostSpeed); }

void Flyer::move(const FlyKeys &keys, double seconds)
{
    const auto between = [](bool more, bool less) { return int(more) - int(less); };
    const int ahead = between(keys.ahead, keys.back);
    const int right = between(keys.right, keys.left);
    const int up = between(keys.up, keys.down);
    const double way = m_speed * seconds * (keys.fast ? FastFactor : 1.0);
    const double sine = std::sin(radians(m_camera.heading));
    const double cosine = std::cos(radians(m_camera.heading));
    m_camera.x += way * (ahead * sine + right * cosine);
    m_camera.y += way * (ahead * cosine - right * sine);
    m_camera.z += way * up;
}

void Flyer::look(const QPointF &pixels, double shown, double asked)
{
    const double focal = std::max(m_camera.focal * shown / std::max(asked, 1.0), 1.0);
    m_camera.heading =
        turned(m_camera.heading - std::atan(pixels.x() / focal) * 180 / Pi);
    m_camera.pitch = std::clamp(m_camera.pitch + std::atan(pixels.y() / focal) * 180 / Pi,
                                -SteepestPitch, SteepestPitch);
}

void Flyer::zoom(double notches)
{
    m_camera.focal *= std::pow(ANotch, notches);
    m_camera.focal = std::max(onStepsOf(&SceneryData::BrennA, m_camera.focal), 1.0);
}

void Flyer::hurry(double notches) { setSpeed(m_speed * std::pow(SpeedANotch, notches)); }

ViewCamera Flyer::onSteps(const ViewCamera &camera)
{
    using D = SceneryData;
    return {
        onStepsOf(&D::BeobXA, camera.x),       onStepsOf(&D::BeobYA, camera.y),
        onStepsOf(&D::BeobZA, camera.z),       onStepsOf(&D::RichtungA, camera.heading),
        onStepsOf(&D::NeigungA, camera.pitch), onStepsOf(&D::VerkantenA, camera.roll),
        onStepsOf(&D::BrennA, camera.focal)};
}
