#pragma once

#include <QRgb>

/// The bilinear mix, by which all reads between pixels go. Its order of operations is
/// part of every picture's bytes.

/// Between two values: `part` of the way from the first.
[[nodiscard]] inline double between(double first, double second, double part)
{
    return first * (1 - part) + second * part;
}

/// Between the four corners of a cell: fx of the way from column 0 to 1, fy of the way
/// from row 0 to 1. A corner is named by its column, then its row.
[[nodiscard]] inline double bilinear(double c00, double c10, double c01, double c11,
                                     double fx, double fy)
{
    return between(between(c00, c10, fx), between(c01, c11, fx), fy);
}

/// The same for the channels of colours, each cut to an integer; opaque.
[[nodiscard]] inline QRgb bilinearColour(QRgb c00, QRgb c10, QRgb c01, QRgb c11,
                                         double fx, double fy)
{
    const auto mixed = [fx, fy](int a, int b, int c, int d) {
        return static_cast<int>(bilinear(a, b, c, d, fx, fy));
    };
    return qRgb(mixed(qRed(c00), qRed(c10), qRed(c01), qRed(c11)),
                mixed(qGreen(c00), qGreen(c10), qGreen(c01), qGreen(c11)),
                mixed(qBlue(c00), qBlue(c10), qBlue(c01), qBlue(c11)));
}
