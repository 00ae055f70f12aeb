#pragma once

#include "terrain/heights.h"

#include <vector>

/// Slopes of the ground, a row at a time: the rise for each metre eastward and northward,
/// after Horn (1981), "Hill shading and the reflectance map": a cell's eight neighbours,
/// the nearest four counting twice. Beyond its edges the ground goes on as it reached
/// them.
class SlopeRows {
public:
    /// Cells in metres. The heights are borrowed and have no voids.
    SlopeRows(const Heights &heights, double cellX, double cellY);

    /// The slopes of row y, as many as there are columns.
    void read(int y, float *east, float *north);

private:
    void fill(int y, std::vector<float> &line) const;

    const Heights &m_heights;
    float m_eastFactor;
    float m_northFactor;
    // Heights of three rows, with one more at either end.
    std::vector<float> m_above, m_here, m_below;
};
