#include "terrain/pathheights.h"

#include "flight/straightcamera.h"

#include <algorithm>
#include <cmath>

namespace {

// Just inside of the first and of the last place that has a height.
double inside(double place, int pixels, double scale)
{
    constexpr double Edge = 1e-6; // pixels
    const double last = std::max(pixels - 1.0 - Edge, 0.0);
    return std::clamp(place * scale, Edge, std::max(last, Edge)) / scale;
}

} // namespace

GroundUnder::GroundUnder(const ElevationImage &picture, const SceneryData &data,
                         int frames, const FlightSpline &spline,
                         const std::vector<double> &x, const std::vector<double> &y)
    : m_picture(picture), m_data(data), m_frames(frames), m_spline(spline), m_x(x), m_y(y)
{
}

double GroundUnder::at(double t) const
{
    const double x =
        inside(m_spline.valueAt(t, m_x), m_picture.width(), m_picture.xScale());
    const double y =
        inside(m_spline.valueAt(t, m_y), m_picture.height(), m_picture.yScale());
    return m_picture.elevation(x, y) * zScaleAt(t);
}

// The path has a sample more than it has frames; a frame's share counts without it.
double GroundUnder::zScaleAt(double t) const
{
    const double share = t * m_frames / std::max(m_frames - 1.0, 1.0);
    return smoothedValue(share, m_data.HDateiSkalaZA, m_data.HDateiSkalaZE,
                         m_data.Traegheit);
}

std::vector<double> raisedTo(const std::vector<double> &floors,
                             const FlightSpline &spline, std::vector<double> net)
{
    constexpr int MostRounds = 60;
    const auto last = double(floors.size() - 1);
    for (int round = 0; round < MostRounds; ++round) {
        bool isHighEnough = true;
        for (std::size_t i = 0; i < floors.size(); ++i) {
            const CurveWeights w = spline.weightsAt(double(i) / last);
            double height = 0.0;
            double squares = 0.0;
            for (std::size_t k = 0; k < w.weights.size(); ++k) {
                height += w.weights[k] * net[std::size_t(w.first) + k];
                squares += w.weights[k] * w.weights[k];
            }
            if (height >= floors[i])
                continue;
            isHighEnough = false;
            // The least change of the four points that lifts the path to the floor.
            for (std::size_t k = 0; k < w.weights.size(); ++k)
                net[std::size_t(w.first) + k] +=
                    w.weights[k] / squares * (floors[i] - height);
        }
        if (isHighEnough)
            break;
    }
    constexpr double Noise = 1e-7; // of the sums; a whole height stays as it is
    for (double &height : net)
        height = std::ceil(height - Noise);
    return net;
}
