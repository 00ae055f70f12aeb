#include "raster/bilinearrows.h"

#include "raster/bilinear.h"
#include "raster/imagerows.h"

#include <algorithm>
#include <cmath>

namespace {

// The last position from which a successor can be read; 0 where there is none.
double heldWithin(double position, int count)
{
    return std::min(position, std::max(count - 2.0, 0.0));
}

} // namespace

BilinearRows::BilinearRows(const QImage &image, int width, int height)
    : m_image(image), m_rowRatio(double(image.height()) / height),
      m_columns(static_cast<size_t>(width)), m_fractions(static_cast<size_t>(width)),
      m_row(static_cast<size_t>(width))
{
    const double ratio = double(image.width()) / width;
    for (size_t x = 0; x < m_columns.size(); ++x) {
        const double position = heldWithin(double(x) * ratio, image.width());
        m_columns[x] = static_cast<int>(position);
        m_fractions[x] = position - std::floor(position);
        m_wholeColumns = m_wholeColumns && m_fractions[x] == 0.0;
    }
}

const BilinearRows::MixedRow &BilinearRows::mixedRow(int y)
{
    const int slot = y & 1; // neighbours never share a slot
    MixedRow &mixed = m_mixed[slot];
    if (m_held[slot] == y)
        return mixed;
    m_held[slot] = y;
    mixed.resize(m_columns.size() * 3);
    const QRgb *const pixels = rowOf(m_image, y);
    const int last = m_image.width() - 1;
    double *out = mixed.data();
    for (size_t x = 0; x < m_columns.size(); ++x) {
        const int column = m_columns[x];
        const QRgb left = pixels[column];
        const QRgb right = pixels[std::min(column + 1, last)];
        const double fx = m_fractions[x];
        *out++ = between(qRed(left), qRed(right), fx);
        *out++ = between(qGreen(left), qGreen(right), fx);
        *out++ = between(qBlue(left), qBlue(right), fx);
    }
    return mixed;
}

const QRgb *BilinearRows::copyRow(int y)
{
    const QRgb *const pixels = rowOf(m_image, y);
    for (size_t x = 0; x < m_row.size(); ++x)
        m_row[x] = 0xFF000000u | pixels[m_columns[x]];
    return m_row.data();
}

const QRgb *BilinearRows::row(int y)
{
    const double position = heldWithin(y * m_rowRatio, m_image.height());
    const int iy = static_cast<int>(position);
    const double fy = position - std::floor(position);
    if (m_wholeColumns && fy == 0.0)
        return copyRow(iy); // all mixes are whole colours

    const double *upper = mixedRow(iy).data();
    const double *lower = mixedRow(std::min(iy + 1, m_image.height() - 1)).data();
    for (QRgb &colour : m_row) {
        int channels[3];
        for (int c = 0; c < 3; ++c)
            channels[c] = static_cast<int>(between(upper[c], lower[c], fy));
        colour = qRgb(channels[0], channels[1], channels[2]);
        upper += 3;
        lower += 3;
    }
    return m_row.data();
}
