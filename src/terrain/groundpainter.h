#pragma once

#include "terrain/groundpalettes.h"
#include "terrain/groundplaces.h"
#include "terrain/speckle.h"

#include <QRgb>

#include <vector>

/// Heights and slopes of a row of pixels.
struct GroundRow {
    const float *metres;
    const float *east; ///< rise over run
    const float *north;
    int width;
};

/// Paints ground in the colours of a palette.
class GroundPainter {
public:
    /// `lowest` of all heights, metres; `cell` of the heights, metres: slopes of wide
    /// cells are flatter than the ground that they stand for. `places` must outlive it.
    GroundPainter(const GroundPalette &palette, const GroundPlaces &places, float lowest,
                  double cell, int width);

    void paint(int y, const GroundRow &row, QRgb *pixels);

private:
    struct Colour {
        float r, g, b;
    };
    [[nodiscard]] static std::vector<Colour> table(std::span<const PaletteStop> stops);
    [[nodiscard]] bool isSea(float metres, float east, float north) const;
    [[nodiscard]] Colour sea(float metres) const;
    [[nodiscard]] Colour land(float metres, float slope, float patch) const;

    const GroundPalette &m_palette;
    std::vector<Colour> m_ground, m_rock; // by height
    const GroundPlaces &m_places;
    float m_lowest; // of all heights
    float m_slopeFactor;
    SpeckleRows m_speckle;
    std::vector<float> m_patches, m_grain;
};
