#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <span>

/// A colour at a height, 0 the lowest of the terrain and 1 the highest.
struct PaletteStop {
    float height;
    std::array<float, 3> rgb; ///< 0 to 255
};

/// Colours of ground by height and slope.
struct GroundPalette {
    const char *name;
    std::span<const PaletteStop> ground; ///< where things grow or snow lies
    std::span<const PaletteStop> rock;   ///< on steep slopes
    float rockFrom; ///< slope, rise over run, at which rock begins to show
    float rockFull; ///< and from which on there is nothing else
    float belts;    ///< how far heights of colours waver, of the range
    float speckle;  ///< how much the brightness wavers, of it
    bool hasSea;    ///< whether ground below 0 m lies under water
    std::array<float, 3> shallow;
    std::array<float, 3> deep;
    std::array<int, 3> ofVoids; ///< for cells without a height
    float evenness;             ///< 0: colours by height, 1: by the share of lower ground
};

/// The palettes of the program by their names; null for another name.
[[nodiscard]] const GroundPalette *groundPalette(const QString &name);

/// Their names, in the order in which they are offered.
[[nodiscard]] QStringList groundPaletteNames();
