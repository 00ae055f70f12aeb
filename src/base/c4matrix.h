#pragma once

#include "base/vectors.h"

/// Sixteen doubles, row after row; all zero by default.
class C4Matrix {
public:
    double m[4][4] = {};
};

/// The row vector v times the matrix.
[[nodiscard]] inline C4Vector operator*(const C4Vector &v, const C4Matrix &a)
{
    const auto column = [&](int c) {
        return v.x * a.m[0][c] + v.y * a.m[1][c] + v.z * a.m[2][c] + v.w * a.m[3][c];
    };
    return {column(0), column(1), column(2), column(3)};
}
