#pragma once

#include "terrain/geogrid.h"
#include "terrain/gridsteps.h"
#include "terrain/heights.h"
#include "terrain/pointreader.h"

#include <optional>

/// What one look at all points of a file tells of them.
class PointSurvey {
public:
    void add(const std::vector<GroundPoint> &points);

    [[nodiscard]] qint64 points() const { return m_points; }
    /// Points with a height.
    [[nodiscard]] qint64 heights() const { return m_heights; }
    [[nodiscard]] Extent bounds() const;
    /// Whether coordinates must be degrees, though nothing says so: they are small, lie
    /// densely, and the ground would be steeper than any if they were metres.
    [[nodiscard]] bool looksGeographic() const;
    /// The steps of a grid on which the points lie, by their coordinates alone. Nothing
    /// where they are uneven, or where the grid would be almost empty.
    [[nodiscard]] std::optional<std::pair<AxisSteps, AxisSteps>> steps() const;

private:
    AxisValues m_x;
    AxisValues m_y;
    qint64 m_points = 0;
    qint64 m_heights = 0;
    double m_lowest = 0.0;
    double m_highest = 0.0;
};

/// Points on the cells of a grid.
class PointGrid {
public:
    /// Takes the memory of all cells.
    PointGrid(const AxisSteps &x, const AxisSteps &y);

    /// Bytes of the grid of such steps.
    [[nodiscard]] static qint64 memory(const AxisSteps &x, const AxisSteps &y);

    /// A later point wins a cell.
    void add(const std::vector<GroundPoint> &points);
    /// Whether most points have neighbours on both axes: the others are no grid, though
    /// their coordinates are even, such as whole metres of scattered points.
    [[nodiscard]] bool isDense() const;
    /// Points that lie on a cell that was taken.
    [[nodiscard]] qint64 doubles() const { return m_doubles; }
    [[nodiscard]] GeoTransform transform() const;
    [[nodiscard]] Heights takeHeights() { return std::move(m_heights); }

private:
    AxisSteps m_x;
    AxisSteps m_y;
    Heights m_heights;
    qint64 m_points = 0;
    qint64 m_doubles = 0;
};
