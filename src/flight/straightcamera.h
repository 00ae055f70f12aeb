#pragma once

#include "base/framecamera.h"

struct SceneryData;

/// The value of a parameter at t, 0 to 1, on the way from its first to its last
/// value. Starts and ends the more gently the larger `inertia` is.
[[nodiscard]] double smoothedValue(double t, double first, double last, double inertia);

/// The camera of one frame of a straight flight. `qualityFactor` is the size of the
/// target in terms of the size that was asked for.
[[nodiscard]] FrameCamera straightCamera(const SceneryData &data, int frame,
                                         double qualityFactor);
