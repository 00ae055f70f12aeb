#pragma once

#include "base/result.h"

#include <QImage>

class Progress;

/// Draws a picture of heights as people read a map: colours from the lowest to the
/// highest, lit from the north-west.
///
/// The size of a cell is not known, so slopes are exaggerated until the median of them
/// is well seen. Slopes by Horn's differences of eight neighbours (1981), light from an
/// azimuth of 315 and a height of 45 degrees. A failure: stopped, or no memory.
[[nodiscard]] Result<QImage> shadedRelief(const QImage &heights, Progress &progress);
