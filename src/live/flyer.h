#pragma once

#include "live/livepicture.h"

#include <QPointF>

/// Where a hand steers the camera, as switches that are held.
struct FlyKeys {
    bool ahead = false, back = false, left = false, right = false;
    bool up = false, down = false;
    bool fast = false;

    [[nodiscard]] bool any() const
    {
        return ahead || back || left || right || up || down;
    }
    bool operator==(const FlyKeys &) const = default;
};

/// A camera that is flown by hand: world units, degrees, and world units a second.
class Flyer {
public:
    static constexpr double LeastSpeed = 0.1;
    static constexpr double MostSpeed = 1e6;
    /// Seconds of way that a key goes at once when it is pressed.
    static constexpr double FirstStep = 1.0 / 30;

    [[nodiscard]] const ViewCamera &camera() const { return m_camera; }
    void setCamera(const ViewCamera &camera) { m_camera = camera; }
    [[nodiscard]] double speed() const { return m_speed; }
    void setSpeed(double speed);

    /// Goes on for so many seconds. Ahead is level along the heading.
    void move(const FlyKeys &keys, double seconds);
    /// Turns as a drag by so many pixels does, in a picture whose frame is `shown` pixels
    /// wide of `asked` ones: what lies under the pointer follows it.
    void look(const QPointF &pixels, double shown, double asked);
    /// Steps of the wheel: the focal length, or the speed, up or down.
    void zoom(double notches);
    void hurry(double notches);

    /// A camera on the steps of the form's fields, within their ranges.
    [[nodiscard]] static ViewCamera onSteps(const ViewCamera &camera);

private:
    ViewCamera m_camera;
    double m_speed = 50.0;
};
