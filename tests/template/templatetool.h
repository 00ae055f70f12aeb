#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

/// Turns a terrain upside down: each elevation becomes its opposite, held within those of
/// an elevation file.
[[nodiscard]] Result<ElevationImage> turnUpsideDown(const ElevationImage &image,
                                                    Progress &progress);
