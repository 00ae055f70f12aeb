#pragma once

#include <QSize>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

/// Heights in metres, row by row southward; NaN where there is none.
struct Heights {
    QSize size;
    std::vector<float> metres;

    [[nodiscard]] const float *row(int y) const
    {
        return metres.data() + std::size_t(y) * std::size_t(size.width());
    }
    [[nodiscard]] float *row(int y)
    {
        return metres.data() + std::size_t(y) * std::size_t(size.width());
    }
};

[[nodiscard]] qint64 countVoids(const Heights &heights);

/// The lowest and the highest height; nothing where all cells are void.
[[nodiscard]] std::optional<std::pair<float, float>> rangeOf(const Heights &heights);
