#pragma once

#include <QImage>

#include <array>
#include <vector>

/// Reads an image stretched to another size, row by row from the top: for each
/// position what Image::pixel(x * rx, y * ry) gives, to the bit.
///
/// A read mixes along the row first, then between two rows. The mixes along a
/// row depend on one source row alone, so the two last ones are kept.
class BilinearRows {
public:
    /// Borrows the image, which has to have 4 bytes a pixel.
    BilinearRows(const QImage &image, int width, int height);

    /// The colours of row y of the stretched image, opaque.
    const QRgb *row(int y);

private:
    // Red, green and blue, mixed along a row; one after another for each pixel.
    using MixedRow = std::vector<double>;

    const MixedRow &mixedRow(int y);
    const QRgb *copyRow(int y);

    const QImage &m_image;
    double m_rowRatio;
    bool m_wholeColumns = true; // no position lies between two columns
    std::vector<int> m_columns;
    std::vector<double> m_fractions;
    std::array<MixedRow, 2> m_mixed;
    std::array<int, 2> m_held{-1, -1};
    std::vector<QRgb> m_row;
};
