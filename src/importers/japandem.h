#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

class QIODevice;

/// What a Japan DEM file holds.
struct JapanDem {
    ElevationImage image; ///< null for a size below 0
    int nonZeroCount = 0; ///< elevations that are not 0
    qint64 voidCount = 0; ///< samples that are unknown

    /// Tells the count.
    [[nodiscard]] QString message() const;
};

/// Reads a Japan DEM file from a device that is open in text mode. `voidValue` stands
/// for samples that are unknown and become 0; `fileName` is named by the error text.
/// Steps before each row.
[[nodiscard]] Result<JapanDem> convertJapanDem(QIODevice &in, int voidValue,
                                               const QString &fileName,
                                               Progress &progress);
