#pragma once

#include "base/framecamera.h"
#include "scene/scenerydocument.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

/// A camera in the units of the form: world units, degrees, and pixels of a frame of the
/// size that the scenery asks for.
struct ViewCamera {
    double x = 0.0, y = 0.0, z = 0.0;
    double heading = 0.0, pitch = 0.0, roll = 0.0;
    double focal = 1000.0;

    bool operator==(const ViewCamera &) const = default;
};

/// The camera of a frame that is as large as the scenery asks for.
[[nodiscard]] ViewCamera viewOf(const FrameCamera &frame);

/// What the live view is to show: a value that the engine keeps to itself.
struct LiveRequest {
    SceneryDocument document;         ///< as the form shows it
    QString folder;                   ///< of the scenery file
    int frame = 0;                    ///< from 0
    std::optional<ViewCamera> camera; ///< in place of the frame's own
    /// Height above the ground that such a camera holds.
    std::optional<double> clearance;
    /// Such a camera comes nearer and looks down first, until no background is seen.
    bool fill = false;
    QSize view;             ///< device pixels
    bool moving = false;    ///< the next request follows at once: no refinement
    bool besideRun = false; ///< a run wants the cores

    bool operator==(const LiveRequest &) const = default;
};

/// A picture that the engine drew, or why it could not.
struct LivePicture {
    quint64 request = 0; ///< number of the request that it answers
    QImage image;        ///< null where there is none
    int frame = 0;
    ViewCamera camera;
    std::optional<double> groundHeight; ///< under the camera, in world units
    bool refined = false;               ///< the same pixels as a final frame of that size
    bool last = false;                  ///< nothing better follows for this request
    QString message;                    ///< what is missing, or empty
};
