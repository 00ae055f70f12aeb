#pragma once

#include "raster/elevationimage.h"

/// An elevation raster of the given size with all elevations 0. The image is null if
/// the size is below one pixel, is no number or goes beyond what one image may take, or
/// beyond the memory budget.
[[nodiscard]] ElevationImage blankElevation(double columns, double rows);
