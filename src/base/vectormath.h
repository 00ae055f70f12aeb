#pragma once

#include "base/vectors.h"

#include <cmath>

// Of the first three components. The order of the terms is part of the results:
// pictures are the same to the bit only as long as it stays.

[[nodiscard]] inline C4Vector difference(const C4Vector &a, const C4Vector &b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z, 0.0};
}

[[nodiscard]] inline C4Vector cross(const C4Vector &a, const C4Vector &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x, 0.0};
}

[[nodiscard]] inline double length(const C4Vector &v)
{
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// v scaled to unit length on x, y, z; w stays. A zero vector stays as it is.
[[nodiscard]] inline C4Vector normalized(const C4Vector &v)
{
    const double l = length(v);
    return l != 0.0 ? C4Vector{v.x / l, v.y / l, v.z / l, v.w} : v;
}
