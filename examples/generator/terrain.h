#pragma once

#include <vector>

/// A square field of heights, 0 the lowest valley and 1 the highest summit; rows
/// run downward (northern row first).
struct HeightField {
    int side = 0;
    std::vector<double> heights;

    [[nodiscard]] double &at(int x, int y) { return heights[std::size_t(y) * side + x]; }
    [[nodiscard]] double at(int x, int y) const
    {
        return heights[std::size_t(y) * side + x];
    }
    /// Bilinear read, held at the borders.
    [[nodiscard]] double sample(double x, double y) const;
};

/// A mountain range with valleys: ridged noise, a range that rises to the north,
/// rain that cuts the valleys.
[[nodiscard]] HeightField makeMountains(int side, unsigned seed);
