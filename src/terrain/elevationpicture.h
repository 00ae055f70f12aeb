#pragma once

#include "base/result.h"
#include "terrain/heights.h"

#include <QImage>

#include <optional>

class WorkerPool;
struct Stretch;

/// A picture of heights as the program reads them: each pixel a whole number of units in
/// 24 bits, as ElevationImage has it.
struct ElevationPicture {
    QImage image;
    qint64 cut =
        0; ///< heights that 24 bits do not hold, and became the nearest that they do
};

/// Heights become the nearest whole number of units, halves away from zero. There must be
/// no voids. Fails where it is stopped or where there is not enough memory.
[[nodiscard]] Result<ElevationPicture> elevationPicture(const Heights &heights,
                                                        double unit, WorkerPool &pool,
                                                        const Stretch &stretch);

/// The heights of such a picture in metres. Fails as above.
[[nodiscard]] Result<Heights> heightsOfPicture(const QImage &image, double unit,
                                               WorkerPool &pool, const Stretch &stretch);

/// The world's units for a unit of heights, the z scale of a scenery, rounded to what its
/// form holds.
[[nodiscard]] double zScaleOf(double unit, double metresPerUnit, double exaggeration);

/// The unit of heights, metres, for a scenery whose world unit is so many metres: 0.01,
/// or the smallest of 0.1, 1, 10 and so on whose z scale the form's six decimals hold
/// well.
[[nodiscard]] double unitFor(double metresPerUnit, double exaggeration);
