#pragma once

#include <QImage>

/// Lays a mask, stretched to the image's size, over an image, in place: the
/// mask's alpha tells how much of its colour comes through. All pixels become
/// opaque. False if memory is short; the image is then as it was.
[[nodiscard]] bool applyMask(QImage &image, const QImage &mask);
