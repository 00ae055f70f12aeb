#include "raster/elevationcolumns.h"

#include "raster/bilinear.h"
#include "raster/elevationimage.h"

#include <algorithm>
#include <cmath>

ElevationColumns::ElevationColumns(const ElevationImage &image,
                                   const std::vector<double> &x)
    : m_image(&image), m_read(image)
{
    m_columns.reserve(x.size());
    for (const double position : x) {
        const double px = position * image.xScale();
        if (px >= 0.0 && px < image.width() - 1)
            m_columns.push_back({static_cast<int>(px), px - std::floor(px)});
        else
            m_columns.push_back({-1, 0.0});
    }
}

void ElevationColumns::read(double y, int first, int count, double *z) const
{
    const double py = m_image->height() - y * m_image->yScale() - 1.0;
    if (!(py >= 0.0 && py < m_image->height() - 1)) {
        std::fill_n(z, count, 0.0);
        return;
    }
    const int row = static_cast<int>(py);
    const double fy = py - std::floor(py);
    const double zScale = m_image->zScale();
    const auto steps = [&](int column, int r) -> double {
        return ElevationImage::stepsOf(m_read(column, r));
    };
    const Column *const columns = m_columns.data() + first;
    for (int k = 0; k < count; ++k) {
        const Column &column = columns[k];
        double elevation = 0.0;
        if (column.index >= 0) {
            elevation = bilinear(steps(column.index, row), steps(column.index + 1, row),
                                 steps(column.index, row + 1),
                                 steps(column.index + 1, row + 1), column.fraction, fy) *
                        zScale;
        }
        z[k] = elevation;
    }
}
