#pragma once

#include "tools/rectify.h"

#include <array>

/// The eight coordinates x1, y1 to x4, y4 of one image's points.
using Points = std::array<double, 8>;

inline void setCorrectedPoints(const Points &p)
{
    Ax = p[0], Ay = p[1], Bx = p[2], By = p[3];
    Cx = p[4], Cy = p[5], Dx = p[6], Dy = p[7];
}

inline void setDistortedPoints(const Points &p)
{
    Ax_ = p[0], Ay_ = p[1], Bx_ = p[2], By_ = p[3];
    Cx_ = p[4], Cy_ = p[5], Dx_ = p[6], Dy_ = p[7];
}
