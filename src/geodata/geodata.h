#pragma once

#include "terrain/terrainsource.h"

/// What reads terrain by GDAL.
[[nodiscard]] std::unique_ptr<TerrainSource> makeGeodata();
