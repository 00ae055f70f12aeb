#pragma once

#include <QChar>
#include <QList>

#include <limits>
#include <optional>

/// What becomes of points: Auto is a grid where their steps are even, else triangles.
enum class PointSurface { Auto, Grid, Triangles };

/// How files of points are read. What is not set is guessed from the file.
struct PointOptions {
    PointSurface surface = PointSurface::Auto;
    QList<int> columns;                ///< of x, y and z, from 1; empty: guessed
    std::optional<QChar> separator;    ///< ',', ';', '\t' or ' '
    std::optional<QChar> decimalPoint; ///< '.' or ','
    std::optional<int> skippedLines;   ///< ahead of the points
    /// Longest edge of a triangle that is filled, metres.
    double longestEdge = std::numeric_limits<double>::infinity();

    bool operator==(const PointOptions &) const = default;
};
