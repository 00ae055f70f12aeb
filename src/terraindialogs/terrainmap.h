#pragma once

#include "terrain/heights.h"
#include "terrain/terrainsource.h"

#include <QImage>

/// Width of a cell of a terrain over its height, in metres on the ground as near as a map
/// needs it: degrees of longitude count by the cosine of the middle latitude.
[[nodiscard]] double metresShape(const TerrainFacts &facts);

/// A shaded map of the first `rows` rows of an overview: green lowlands to white heights,
/// light from the north-west as maps have it. Voids and what is not read yet are
/// transparent. `shape` is the width of a cell over its height.
[[nodiscard]] QImage drawnMap(const Heights &overview, int rows, double shape);
