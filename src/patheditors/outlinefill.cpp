#include "patheditors/outlinefill.h"

#include "patheditors/outlineedges.h"

#include <QColor>
#include <QImage>
#include <QPainter>

namespace {

constexpr int BandHeight = CoverageBand::Height;

// Times coverage in 255ths, as the painter rounds it.
int covered(int part, int coverage)
{
    const int product = part * coverage;
    return (product + (product >> 8) + 128) >> 8;
}

// A band of the picture: transparent but for what its edges enclose.
class BandPicture {
public:
    BandPicture(const QRect &pixels, const QColor &colour);

    /// Takes the rows of a band; gives the range of columns that are not empty.
    PixelRange take(CoverageBand &band, int top);
    /// Draws the range, of which rows belong to the picture, and empties it.
    void draw(QPainter &painter, const PixelRange &range, int top, int rows);

private:
    [[nodiscard]] QRgb *line(int row)
    {
        return reinterpret_cast<QRgb *>(m_image.scanLine(row));
    }

    int m_left;
    QImage m_image;
    std::array<QRgb, 256> m_shades;
};

BandPicture::BandPicture(const QRect &pixels, const QColor &colour)
    : m_left(pixels.left()),
      m_image(pixels.width(), BandHeight, QImage::Format_ARGB32_Premultiplied)
{
    m_image.fill(0);
    for (int i = 0; i < 256; ++i)
        m_shades[static_cast<std::size_t>(i)] =
            qRgba(covered(colour.red(), i), covered(colour.green(), i),
                  covered(colour.blue(), i), i);
}

PixelRange BandPicture::take(CoverageBand &band, int top)
{
    PixelRange range;
    for (int row = 0; row < BandHeight; ++row) {
        QRgb *const pixels = line(row);
        const PixelRange part =
            band.takeRow(top + row, [&](int x, int length, int coverage) {
                std::fill_n(pixels + (x - m_left), length,
                            m_shades[static_cast<std::size_t>(coverage)]);
            });
        if (part.begin == part.end)
            continue;
        if (range.begin == range.end)
            range = part;
        range = {std::min(range.begin, part.begin), std::max(range.end, part.end)};
    }
    return range;
}

void BandPicture::draw(QPainter &painter, const PixelRange &range, int top, int rows)
{
    const QRect part(range.begin - m_left, 0, range.end - range.begin, rows);
    painter.drawImage(QPoint(range.begin, top), m_image, part);
    for (int row = 0; row < BandHeight; ++row)
        std::fill_n(line(row) + part.left(), part.width(), 0);
}

} // namespace

void fillOutline(QPainter &painter, const QPainterPath &outline, const QColor &colour,
                 const QRectF &visible)
{
    const QTransform toPixels = painter.deviceTransform();
    const QRect pixels = toPixels.mapRect(visible).toAlignedRect();
    if (pixels.isEmpty())
        return;
    OutlineEdges edges(pixels, toPixels);
    edges.add(outline);
    CoverageBand coverage(pixels.left(), pixels.width());
    BandPicture picture(pixels, colour);

    painter.save();
    painter.setTransform(toPixels.inverted(), true);
    for (int band = 0; band < edges.bandCount(); ++band) {
        const int top = pixels.top() + band * BandHeight;
        coverage.setTop(top);
        if (!edges.countInto(coverage, band))
            continue;
        const PixelRange range = picture.take(coverage, top);
        // The last band may reach beyond the pixels.
        if (range.begin != range.end)
            picture.draw(painter, range, top,
                         std::min(BandHeight, pixels.bottom() + 1 - top));
    }
    painter.restore();
}
