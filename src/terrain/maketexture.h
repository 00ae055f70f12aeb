#pragma once

#include "base/result.h"
#include "terrain/terrainreport.h"
#include "terrain/terrainrequest.h"

#include <QSizeF>

class Progress;

/// A texture that is made from an elevation file of the program.
struct TextureFromElevation {
    QString elevation;
    QString out;
    std::optional<double>
        unit; ///< metres of a height unit; else as the file beside it says
    std::optional<QSizeF> cell; ///< metres of a pixel; else as the files beside it say
    TextureRequest texture;     ///< without photographs
};

/// Makes the texture and writes it, with the georeference that the elevation file has.
/// Where nothing tells a height unit or a cell, they are 1 m, and a note says so.
[[nodiscard]] Result<TerrainReport> makeTexture(const TextureFromElevation &job,
                                                Progress &progress);
