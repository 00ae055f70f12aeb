#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QImage>

#include <array>

// Points 1 to 4 of the corrected image (upper left, upper right, lower left,
// lower right) and, with an underscore, the same points on the distorted image.
// Global, so that cost functions of two arguments can see them.
extern double Ax, Ay, Bx, By, Cx, Cy, Dx, Dy;
extern double Ax_, Ay_, Bx_, By_, Cx_, Cy_, Dx_, Dy_;
/// The output pixel in hand.
extern double Px_, Py_;

/// Where a point of the corrected image is and, with an underscore, where it lies on the
/// distorted one; pixels, y downward.
struct RectifyCorner {
    static constexpr int Lowest = -10000; ///< of what a user may give
    static constexpr int Highest = 100000;

    double x = 0.0;
    double y = 0.0;
    double x_ = 0.0;
    double y_ = 0.0;
};

/// Points 1 to 4.
using RectifyCorners = std::array<RectifyCorner, 4>;

/// Sets the points that rectify() goes by.
void setRectifyCorners(const RectifyCorners &corners);

/// Warps an image so that the distorted points come to lie on the corrected
/// ones: each pixel is read at its own place plus the mean of the four
/// displacements, weighted by the inverse squares of the distances to the
/// distorted points. Same size and alpha channel, opaque. Steps
/// before each row.
[[nodiscard]] Result<QImage> rectify(const QImage &image, Progress &progress);
