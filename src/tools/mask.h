#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QImage>

/// An image with a mask, stretched to its size, laid over it: the mask's alpha tells
/// how much of its colour comes through. All pixels become opaque. Steps before each row.
[[nodiscard]] Result<QImage> applyMask(QImage image, const QImage &mask,
                                       Progress &progress);
