#pragma once

#include "terrain/terrainsource.h"

#include <QPointF>
#include <QString>

#include <optional>

/// A number as people read it: five significant digits, no exponent, a point.
[[nodiscard]] QString shortNumber(double number);

/// What files say of themselves, in a few lines; with `scan` what their cells say.
[[nodiscard]] QString factsText(const TerrainFacts &facts,
                                const std::optional<TerrainScan> &scan);

/// The size of a grid on the ground and in cells.
[[nodiscard]] QString gridText(const OutputGrid &grid);

/// Coordinates of a cell of a terrain and, where it is known, the height there.
[[nodiscard]] QString placeText(const TerrainFacts &facts, const QPointF &cell,
                                std::optional<double> metres);
