#pragma once

/// Whether a frame of this size can be drawn with the memory that is left.
[[nodiscard]] bool frameFitsMemory(int width, int height);
