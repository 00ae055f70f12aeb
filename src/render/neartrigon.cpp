#include "render/neartrigon.h"

#include "raster/textureimage.h"

#include <algorithm>

NearTrigon::NearTrigon(TextureImage *target, const TextureImage *texture, C4Vector light,
                       const Transformation *camera, int quality, CoveredPixels *covered)
    : m_xMax(target->width() - 1), m_yMax(target->height() - 1), m_covered(covered),
      m_colours(target, texture, light, camera, quality)
{
}

void NearTrigon::paint(ScreenCorner a, ScreenCorner b, ScreenCorner c,
                       unsigned int number, const TriangleSource &source)
{
    ScreenCorner s[3] = {a, b, c};
    sortByRow(s, [](int, int) {});
    bool begun = false;
    const auto take = [&](int row, int first, int last) {
        m_covered->take(row, first, last, [&](int from, std::uint64_t free) {
            if (!begun)
                m_colours.begin(source.triangle(number));
            begun = true;
            m_colours.add(row, first, from, free);
        });
    };
    if (isLow(s)) {
        fillLow(s, [&](int row, int from, int to) {
            if (row >= 0 && row <= m_yMax && m_share.owns(row))
                take(row, std::max(std::min(from, to), 0),
                     std::min(std::max(from, to), m_xMax));
        });
        return;
    }
    // In the reverse of the order in which both parts are filled where far ones come
    // first: they share the middle row.
    const auto takeRow = [&](int row, const TrigonEdges &edges) {
        take(row, edges.first(), edges.last(m_xMax));
    };
    fillDownward(s, m_yMax, m_share, takeRow);
    fillUpward(s, m_yMax, m_share, takeRow);
}
