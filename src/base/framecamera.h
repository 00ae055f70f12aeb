#pragma once

#include "base/vectors.h"

/// Everything that changes from frame to frame: the camera, and what is seen through it.
struct FrameCamera {
    C4Vector position;
    double direction = 0.0; // radians, clockwise from north
    double pitch = 0.0;     // radians, positive upward
    double focal = 0.0;     // pixels of the target
    double roll = 0.0;      // radians, counterclockwise
    double zScale = 1.0;    // of the elevation
    double dustRange = 1.0;
};
