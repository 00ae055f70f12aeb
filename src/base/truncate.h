#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>

// Numbers become whole ones by being cut toward zero. The functions differ in what they
// make of numbers that the result cannot hold, and bear that in their names.

/// Cuts toward zero. What no int can hold, not a number included, gives the lowest int,
/// whose low byte is 0.
[[nodiscard]] constexpr int truncatedOrLowest(double v)
{
    return v > -2147483649.0 && v < 2147483648.0 ? static_cast<int>(v)
                                                 : std::numeric_limits<int>::min();
}

/// Cuts toward zero. What no int can hold gives the nearest that one can; what is no
/// number gives the lowest.
[[nodiscard]] constexpr int truncatedOrNearestNanLowest(double v)
{
    if (v >= 2147483647.0)
        return std::numeric_limits<int>::max();
    return v > -2147483648.0 ? static_cast<int>(v) : std::numeric_limits<int>::min();
}

/// Cuts toward zero. What no int can hold gives the nearest that one can; what is no
/// number gives 0.
[[nodiscard]] constexpr int truncatedOrNearest(double v)
{
    return v == v ? truncatedOrNearestNanLowest(v) : 0;
}

/// trunc(v + 0.5), below zero as well: the nearest whole number for those that are not
/// negative. What no int can hold as truncatedOrNearest().
[[nodiscard]] constexpr int truncatedPlusHalf(double v)
{
    return truncatedOrNearest(v + 0.5);
}

/// Half a unit farther from zero. Cut toward zero, that is v rounded to the nearest whole
/// number, halves away from zero.
[[nodiscard]] constexpr double halfAwayFromZero(double v)
{
    return v < 0.0 ? v - 0.5 : v + 0.5;
}

/// The low bits, in two's complement, of v cut toward zero; 0 for what is infinite or no
/// number.
template <int Bits> [[nodiscard]] inline quint32 lowBitsOfTruncated(double v)
{
    static_assert(Bits > 0 && Bits < 32);
    constexpr quint32 Mask = (1u << Bits) - 1;
    constexpr double FitsQint64 = 4611686018427387904.0; // 2^62
    if (std::abs(v) < FitsQint64)
        return static_cast<quint32>(static_cast<qint64>(v)) & Mask;
    if (!std::isfinite(v))
        return 0;
    const double rest = std::fmod(v, double(1u << Bits));
    return static_cast<quint32>(static_cast<qint32>(rest)) & Mask;
}

/// The nearest 32-bit number.
[[nodiscard]] constexpr qint32 saturated(qint64 n)
{
    return static_cast<qint32>(std::clamp<qint64>(n, std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}
