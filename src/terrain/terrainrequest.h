#pragma once

#include "terrain/geogrid.h"
#include "terrain/pointoptions.h"

#include <QStringList>

/// What is baked into a texture; each with those before it.
enum class BakedLight { None, Sun, Shadow, Sky };

/// How a texture is made from heights.
struct TextureRequest {
    QString palette = QStringLiteral("temperate"); ///< a name, or a file of colours
    QStringList photos;                            ///< instead of a palette
    std::optional<QSize> size;                     ///< pixels
    BakedLight light = BakedLight::None;
    double sunAzimuth = 225.0; ///< degrees clockwise from north
    double sunHeight = 40.0;   ///< degrees above the horizon

    bool operator==(const TextureRequest &) const = default;
};

/// Everything that "Open Terrain" and `zephrant-terrain open` can be told.
struct TerrainRequest {
    QStringList files;
    QString out; ///< path without the endings of the files that are written
    GridRequest grid;
    PointOptions points;
    std::optional<double> fill = 100.0; ///< cells; nothing: voids stay
    std::optional<double> unit;         ///< metres of a height unit; chosen by default
    double exaggeration = 1.0;
    TextureRequest texture;
};
