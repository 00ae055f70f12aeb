#pragma once

#include <QSize>

/// Whether a frame of this size can be drawn within the memory budget, together with its
/// copies: the halved one that is written of a frame of extra high quality, and the one
/// that a window shows. A notice tells where it cannot.
[[nodiscard]] bool frameFitsMemory(const QSize &size, bool halved, bool shown);
