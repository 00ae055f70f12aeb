#pragma once

#include "raster/elevationimage.h"

/// What an import could not take over as the file has it.
struct ImportLosses {
    qint64 voids = 0; ///< samples that stand for an unknown height
    qint64 cut = 0;   ///< heights that no pixel of an elevation file holds

    /// Whether a height can be stored, rounded to a whole number.
    [[nodiscard]] static bool isStored(double elevation)
    {
        return elevation > ElevationImage::LowestStep - 0.5 &&
               elevation < ElevationImage::HighestStep + 0.5;
    }
    void countHeight(double elevation) { cut += isStored(elevation) ? 0 : 1; }
};
