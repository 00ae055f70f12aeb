#include "terrain/sloperows.h"

#include <algorithm>

SlopeRows::SlopeRows(const Heights &heights, double cellX, double cellY)
    : m_heights(heights), m_eastFactor(static_cast<float>(1.0 / (8.0 * cellX))),
      m_northFactor(static_cast<float>(1.0 / (8.0 * cellY))),
      m_above(std::size_t(heights.size.width()) + 2), m_here(m_above.size()),
      m_below(m_above.size())
{
}

void SlopeRows::fill(int y, std::vector<float> &line) const
{
    const int width = m_heights.size.width();
    const int last = m_heights.size.height() - 1;
    const int inside = std::clamp(y, 0, last);
    const float *const row = m_heights.row(inside);
    float *const to = line.data() + 1;
    if (inside == y || last == 0) {
        std::copy_n(row, width, to);
    } else {
        const float *const next = m_heights.row(y < 0 ? 1 : last - 1);
        for (int x = 0; x < width; ++x)
            to[x] = row[x] + (row[x] - next[x]);
    }
    const int second = std::min(1, width - 1);
    to[-1] = to[0] + (to[0] - to[second]);
    to[width] = to[width - 1] + (to[width - 1] - to[width - 1 - second]);
}

void SlopeRows::read(int y, float *east, float *north)
{
    fill(y - 1, m_above);
    fill(y, m_here);
    fill(y + 1, m_below);
    const float *const a = m_above.data() + 1;
    const float *const h = m_here.data() + 1;
    const float *const b = m_below.data() + 1;
    const int width = m_heights.size.width();
    for (int x = 0; x < width; ++x) {
        const float right = a[x + 1] + 2.0f * h[x + 1] + b[x + 1];
        const float left = a[x - 1] + 2.0f * h[x - 1] + b[x - 1];
        const float up = a[x - 1] + 2.0f * a[x] + a[x + 1];
        const float down = b[x - 1] + 2.0f * b[x] + b[x + 1];
        east[x] = (right - left) * m_eastFactor;
        north[x] = (up - down) * m_northFactor;
    }
}
