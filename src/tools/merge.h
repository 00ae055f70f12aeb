#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QImage>

/// How two images become one.
struct MergeOptions {
    enum class Mode {
        Add,      ///< colour1 * bias1 + colour2 * bias2
        Multiply, ///< (colour1 + bias1) * (colour2 + bias2) / 255
    };
    Mode mode = Mode::Add;
    double bias1 = 0.5;
    double bias2 = 0.5;
};

/// Merges two images channel by channel into an RGB888 image of the first one's
/// size, to which the second is stretched by bilinear reads. A result is cut to
/// an integer of which the low 8 bits are kept; `cut` is told how many channels of
/// pixels lost bits so. Steps before each row.
[[nodiscard]] Result<QImage> merge(const QImage &first, const QImage &second,
                                   const MergeOptions &options, Progress &progress,
                                   qint64 *cut = nullptr);
