#include "terrain/pointsurvey.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A grid may have so many cells for each point.
constexpr double MostCellsOfAPoint = 16.0;

double stepOfOne(const std::optional<AxisSteps> &other)
{
    return other ? other->step : 1.0;
}

} // namespace

void PointSurvey::add(const std::vector<GroundPoint> &points)
{
    for (const GroundPoint &point : points) {
        m_x.add(point.x);
        m_y.add(point.y);
        if (std::isnan(point.z))
            continue;
        m_lowest = m_heights == 0 ? point.z : std::min(m_lowest, point.z);
        m_highest = m_heights == 0 ? point.z : std::max(m_highest, point.z);
        ++m_heights;
    }
    m_points += qint64(points.size());
}

Extent PointSurvey::bounds() const
{
    return {m_x.lowest(), m_y.lowest(), m_x.highest(), m_y.highest()};
}

bool PointSurvey::looksGeographic() const
{
    constexpr double LargestSpacing = 0.1; // degrees
    constexpr double Steepest = 5.0;       // height of a whole terrain by its length
    const Extent b = bounds();
    const double length = std::max(b.width(), b.height());
    if (m_heights < 2 || b.west < -180.0 || b.east > 360.0 || b.width() > 360.0 ||
        b.south < -90.0 || b.north > 90.0)
        return false;
    const double spacing = std::sqrt(b.width() * b.height() / double(m_points));
    return spacing <= LargestSpacing && m_highest - m_lowest > Steepest * length;
}

std::optional<std::pair<AxisSteps, AxisSteps>> PointSurvey::steps() const
{
    const std::vector<double> columns = m_x.sorted();
    const std::vector<double> rows = m_y.sorted();
    auto x = evenSteps(columns, m_x.blur());
    auto y = evenSteps(rows, m_y.blur());
    // A single row has no step of its own.
    if (columns.size() == 1 && y)
        x = AxisSteps{columns.front(), stepOfOne(y), 1};
    if (rows.size() == 1 && x)
        y = AxisSteps{rows.front(), stepOfOne(x), 1};
    if (!x || !y ||
        double(x->count) * double(y->count) > MostCellsOfAPoint * double(m_points))
        return {};
    return std::pair(*x, *y);
}

PointGrid::PointGrid(const AxisSteps &x, const AxisSteps &y) : m_x(x), m_y(y)
{
    m_heights.size = {int(x.count), int(y.count)};
    m_heights.metres.assign(std::size_t(x.count) * std::size_t(y.count),
                            std::numeric_limits<float>::quiet_NaN());
}

qint64 PointGrid::memory(const AxisSteps &x, const AxisSteps &y)
{
    return x.count * y.count * qint64(sizeof(float));
}

void PointGrid::add(const std::vector<GroundPoint> &points)
{
    for (const GroundPoint &point : points) {
        const std::int64_t column = m_x.indexOf(point.x);
        const std::int64_t row = m_y.count - 1 - m_y.indexOf(point.y);
        // Not so if the file was changed in between.
        if (column < 0 || column >= m_x.count || row < 0 || row >= m_y.count)
            continue;
        float &height = m_heights.row(int(row))[column];
        ++m_points;
        if (!std::isnan(height))
            ++m_doubles;
        height = float(point.z);
    }
}

bool PointGrid::isDense() const
{
    const int width = m_heights.size.width();
    const int height = m_heights.size.height();
    if (2 * (m_points - m_doubles) > qint64(width) * height)
        return true;
    qint64 known = 0;
    qint64 joined = 0;
    const auto isKnown = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < width && y < height &&
               !std::isnan(m_heights.row(y)[x]);
    };
    // Some rows tell it of a large grid.
    constexpr qint64 CellsToLookAt = 1 << 20;
    const int stride = int(1 + qint64(width) * height / CellsToLookAt);
    for (int y = 0; y < height; y += stride)
        for (int x = 0; x < width; ++x) {
            if (!isKnown(x, y))
                continue;
            ++known;
            joined += (isKnown(x - 1, y) || isKnown(x + 1, y)) &&
                      (isKnown(x, y - 1) || isKnown(x, y + 1));
        }
    return 2 * joined > known;
}

GeoTransform PointGrid::transform() const
{
    const double north = m_y.first + double(m_y.count - 1) * m_y.step;
    return {m_x.first - m_x.step / 2, m_x.step, 0.0,
            north + m_y.step / 2,     0.0,      -m_y.step};
}
