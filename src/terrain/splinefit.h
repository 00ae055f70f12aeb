#pragma once

#include <array>
#include <vector>

/// Four control points that act on a place of a curve, and how much.
struct CurveWeights {
    int first = 0;
    std::array<double, 4> weights{};
};

/// The cubic B-spline over open uniform knots that flights follow, for the fit of its
/// control points. Its parameter runs from 0 to 1.
class FlightSpline {
public:
    /// At least 4 control points.
    explicit FlightSpline(int controlPoints);

    [[nodiscard]] int size() const { return m_size; }
    [[nodiscard]] CurveWeights weightsAt(double t) const;
    [[nodiscard]] double valueAt(double t, const std::vector<double> &net) const;
    /// The parameter at which a control point acts most: the mean of its knots.
    [[nodiscard]] double centreOf(int point) const;
    /// The control points whose curve is nearest, in least squares, to values at even
    /// parameters from 0 to 1, of which there are more than control points. The first
    /// and the last value are kept.
    [[nodiscard]] std::vector<double> fitted(const std::vector<double> &values) const;

private:
    int m_size;
    std::vector<int> m_knots;
};
