#pragma once

#include "terrain/terrainsource.h"

#include <algorithm>
#include <cmath>

/// How heights differ from those of a judge.
struct Difference {
    qint64 cells = 0;  ///< all that there are
    qint64 differ = 0; ///< by more than half a unit of a centimetre
    double most = 0.0; ///< metres
    qint64 voids = 0;  ///< in one, and not in the other

    /// Whether 999 of 1000 cells agree.
    [[nodiscard]] bool isSmall() const
    {
        return cells > 0 && (differ + voids) * 1000 <= cells;
    }
    [[nodiscard]] bool isNone() const { return cells > 0 && most == 0.0 && voids == 0; }
    [[nodiscard]] QString told() const
    {
        return QStringLiteral("%1 of %2 cells differ, at most %3 m, %4 voids")
            .arg(differ)
            .arg(cells)
            .arg(most)
            .arg(voids);
    }
};

[[nodiscard]] inline Difference differenceOf(const Heights &one, const Heights &other)
{
    constexpr double HalfUnit = 0.005;
    Difference found;
    if (one.size != other.size)
        return found;
    found.cells = qint64(one.metres.size());
    for (std::size_t i = 0; i < one.metres.size(); ++i) {
        const double a = one.metres[i];
        const double b = other.metres[i];
        if (std::isnan(a) != std::isnan(b)) {
            ++found.voids;
        } else if (!std::isnan(a)) {
            found.most = std::max(found.most, std::abs(a - b));
            found.differ += std::abs(a - b) > HalfUnit ? 1 : 0;
        }
    }
    return found;
}
