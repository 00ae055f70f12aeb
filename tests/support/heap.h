#pragma once

#include <cstddef>

/// The memory that a test program takes by new: whoever links heap.cpp has it counted.
namespace heap {

/// Counts from here: what is held at this moment is 0.
void startPeak();

/// The most bytes that were held at a time since startPeak().
[[nodiscard]] std::size_t peak();

} // namespace heap
