#pragma once

#include "scene/scenerydocument.h"
#include "terrain/sceneryworld.h"
#include "terrain/splinefit.h"

/// The ground under a path, world units, as the frames of a curved flight have it: with
/// the z scale of the frame that is there.
class GroundUnder {
public:
    /// `x` and `y` are the control points of the plan.
    GroundUnder(const ElevationImage &picture, const SceneryData &data, int frames,
                const FlightSpline &spline, const std::vector<double> &x,
                const std::vector<double> &y);

    /// At a parameter of the path, 0 to 1. Outside of the terrain that of its edge.
    [[nodiscard]] double at(double t) const;
    /// The z scale there.
    [[nodiscard]] double zScaleAt(double t) const;

private:
    const ElevationImage &m_picture;
    const SceneryData &m_data;
    int m_frames;
    const FlightSpline &m_spline;
    const std::vector<double> &m_x;
    const std::vector<double> &m_y;
};

/// Whole heights of control points, near those given, that keep the path at every one of
/// many places at least at a floor. `floors` are those of even parameters from 0 to 1.
[[nodiscard]] std::vector<double> raisedTo(const std::vector<double> &floors,
                                           const FlightSpline &spline,
                                           std::vector<double> net);
