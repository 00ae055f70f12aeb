#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/geogrid.h"

#include <QImage>
#include <QStringList>

/// The size at which photographs lie on a grid with cells of their own: the finest of
/// them counts, up to MostPhotoCells on a side.
[[nodiscard]] Result<QSize> photoSizeOn(const QStringList &files, const OutputGrid &grid);

constexpr int MostPhotoCells = 8192;

/// Photographs warped onto the rectangle of a grid, on all cores; a later one wins.
/// Format_RGB32, or Format_ARGB32 with an alpha of 0 where none lies.
[[nodiscard]] Result<QImage> photoOn(const QStringList &files, const OutputGrid &grid,
                                     const QSize &size, Progress &progress);
