#pragma once

#include <limits>

/// v cut toward zero. What no int can hold, not a number included, gives the
/// lowest int, whose low byte is 0.
[[nodiscard]] inline int truncated(double v)
{
    return v > -2147483649.0 && v < 2147483648.0 ? static_cast<int>(v)
                                                 : std::numeric_limits<int>::min();
}
