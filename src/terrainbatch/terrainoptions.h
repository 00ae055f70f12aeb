#pragma once

#include "commands/option.h"
#include "terrain/terrainrequest.h"

#include <vector>

class Arguments;

// The options of the commands that open terrain, and what was given for them.

/// How files of points are read.
[[nodiscard]] std::vector<Option> pointOptions();
/// Which part is wanted, its system, its cells.
[[nodiscard]] std::vector<Option> gridOptions();
/// The colours and the light of a texture. `light` is what is baked in by default.
[[nodiscard]] std::vector<Option> textureOptions(const QString &light);
/// The other options of `open`.
[[nodiscard]] std::vector<Option> openOptions();
/// The other options of `texture`.
[[nodiscard]] std::vector<Option> scaleOptions();

[[nodiscard]] PointOptions pointsOf(const Arguments &arguments);
[[nodiscard]] GridRequest gridOf(const Arguments &arguments);
[[nodiscard]] TextureRequest textureOf(const Arguments &arguments);
/// Cells up to which holes are filled; nothing where they stay.
[[nodiscard]] std::optional<double> fillOf(const Arguments &arguments);

/// What is wrong with several values together, as a sentence; empty if nothing is.
[[nodiscard]] QString complaintOfOpen(const Arguments &arguments);
[[nodiscard]] QString complaintOfTexture(const Arguments &arguments);
[[nodiscard]] QString complaintOfPoints(const Arguments &arguments);
