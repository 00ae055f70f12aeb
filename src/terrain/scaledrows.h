#pragma once

#include "terrain/groundpainter.h"
#include "terrain/shading.h"
#include "terrain/sloperows.h"

#include <QSize>

#include <vector>

/// Where the pixels of a side lie among cells: straight lines between two of them.
class BetweenCells {
public:
    BetweenCells(int pixels, int cells);

    struct Place {
        int first = 0;
        int second = 0;
        float share = 0.0f; ///< of the second
    };
    [[nodiscard]] const Place &at(int pixel) const
    {
        return m_places[std::size_t(pixel)];
    }
    /// A line of pixels from two of cells, one for each of the places of `across`.
    void mix(const float *upper, const float *lower, float share, float *pixels) const;

private:
    std::vector<Place> m_places;
};

/// Heights and slopes of ground at the pixels of a picture of any size, a row at a time.
class ScaledGround {
public:
    /// The ground is borrowed.
    ScaledGround(const Ground &ground, const QSize &size);

    /// Row y of the picture; holds until the next call.
    [[nodiscard]] GroundRow row(int y);

private:
    const Heights &m_heights;
    QSize m_size;
    SlopeRows m_slopes;
    BetweenCells m_columns, m_rows;
    std::vector<float> m_east, m_north, m_lowerEast, m_lowerNorth; // of cells
    std::vector<float> m_mixed, m_mixedEast, m_mixedNorth;         // of pixels
};
