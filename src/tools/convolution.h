#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QImage>

/// True if a kernel of this size is small enough to be used.
[[nodiscard]] bool kernelFits(const QSize &size);

/// Filters an image with a kernel that is an image itself: each channel of the
/// kernel, less 128, holds the weights for the same channel of the image.
///
/// The kernel is not mirrored and is centred on its pixel (width / 2, height / 2).
/// The sum is divided by the sum of those weights that fell on the image; a sum
/// of 0 gives 0, and of every other quotient the low 8 bits are kept; `cut` is told
/// how many lost bits so. The result is RGB888. Steps before each row.
[[nodiscard]] Result<QImage> convolve(const QImage &image, const QImage &kernel,
                                      Progress &progress, qint64 *cut = nullptr);
