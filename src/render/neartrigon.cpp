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
                       const ScreenBox &box, unsigned int number,
                       const TriangleSource &source)
{
    ScreenCorner s[3] = {a, b, c};
    if (isLowAndCovered(s, box))
        return;
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

// Most triangles of a mesh fill some pixels of one row or two, and most of those that
// come late find them covered: told here without a look at which corner is which.
bool NearTrigon::isLowAndCovered(const ScreenCorner (&corners)[3],
                                 const ScreenBox &box) const
{
    if (box.bottom - box.top > 1 || box.left < 0 || box.right > m_xMax || box.top < 0 ||
        box.bottom > m_yMax || !CoveredPixels::areNear(box.left, box.right) ||
        !m_share.owns(box.top) || !m_share.owns(box.bottom))
        return false;
    std::uint64_t ends[2] = {}; // of both rows
    for (const ScreenCorner &corner : corners)
        ends[corner.row - box.top] |= CoveredPixels::bitOf(corner.x);
    // Of a triangle in one row nothing but two corners is filled; that what lies between
    // is asked for as well makes no difference but in time.
    return m_covered->covers(box.top, box.left, ends[0]) &&
           (ends[1] == 0 || m_covered->covers(box.bottom, box.left, ends[1]));
}
