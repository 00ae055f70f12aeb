#pragma once

#include "base/result.h"

#include <QtGlobal>

#include <optional>

class Progress;
class QImage;

/// What a picture of heights holds, in the steps of its pixels.
struct ElevationFacts {
    int lowest = 0;
    int highest = 0;
    qint64 voids = 0; ///< pixels of the void value, which count neither as low nor high

    bool operator==(const ElevationFacts &) const = default;
};

/// Looks at every pixel of a picture that is no null image. `voidSteps`: the value that
/// stands for no height, if there is one.
[[nodiscard]] Result<ElevationFacts>
elevationFacts(const QImage &image, std::optional<int> voidSteps, Progress &progress);
