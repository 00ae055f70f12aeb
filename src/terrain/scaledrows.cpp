#include "terrain/scaledrows.h"

#include <algorithm>
#include <cmath>

BetweenCells::BetweenCells(int pixels, int cells) : m_places(std::size_t(pixels))
{
    const double scale = double(cells) / pixels;
    for (int i = 0; i < pixels; ++i) {
        const double middle = std::clamp((i + 0.5) * scale - 0.5, 0.0, double(cells - 1));
        const int first = static_cast<int>(middle);
        m_places[std::size_t(i)] = {first, std::min(first + 1, cells - 1),
                                    static_cast<float>(middle - first)};
    }
}

void BetweenCells::mix(const float *upper, const float *lower, float share,
                       float *pixels) const
{
    for (const Place &place : m_places) {
        const float above =
            upper[place.first] + place.share * (upper[place.second] - upper[place.first]);
        const float below =
            lower[place.first] + place.share * (lower[place.second] - lower[place.first]);
        *pixels++ = above + share * (below - above);
    }
}

ScaledGround::ScaledGround(const Ground &ground, const QSize &size)
    : m_heights(ground.heights), m_size(size),
      m_slopes(ground.heights, ground.cellX, ground.cellY),
      m_columns(size.width(), ground.heights.size.width()),
      m_rows(size.height(), ground.heights.size.height()),
      m_east(std::size_t(ground.heights.size.width())), m_north(m_east.size()),
      m_lowerEast(m_east.size()), m_lowerNorth(m_east.size()),
      m_mixed(std::size_t(size.width())), m_mixedEast(m_mixed.size()),
      m_mixedNorth(m_mixed.size())
{
}

GroundRow ScaledGround::row(int y)
{
    const BetweenCells::Place &place = m_rows.at(y);
    m_slopes.read(place.first, m_east.data(), m_north.data());
    if (m_size == m_heights.size)
        return {m_heights.row(y), m_east.data(), m_north.data(), m_size.width()};
    m_slopes.read(place.second, m_lowerEast.data(), m_lowerNorth.data());
    m_columns.mix(m_heights.row(place.first), m_heights.row(place.second), place.share,
                  m_mixed.data());
    m_columns.mix(m_east.data(), m_lowerEast.data(), place.share, m_mixedEast.data());
    m_columns.mix(m_north.data(), m_lowerNorth.data(), place.share, m_mixedNorth.data());
    return {m_mixed.data(), m_mixedEast.data(), m_mixedNorth.data(), m_size.width()};
}
