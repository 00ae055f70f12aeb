#pragma once

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// The nearest 32-bit number.
[[nodiscard]] constexpr qint32 saturated(qint64 n)
{
    return static_cast<qint32>(std::clamp<qint64>(n, std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

/// Cuts towards zero; what 32 bits cannot hold becomes the nearest that they can,
/// what is no number 0.
[[nodiscard]] constexpr qint32 truncated(double v)
{
    if (v >= 2147483647.0)
        return std::numeric_limits<qint32>::max();
    if (v <= -2147483648.0)
        return std::numeric_limits<qint32>::min();
    return v == v ? static_cast<qint32>(v) : 0;
}

/// How a curve's value becomes a pixel: trunc(v + 0.5), below zero as well.
[[nodiscard]] constexpr qint32 rounded(double v) { return truncated(v + 0.5); }
