#include "render/neartrigon.h"

#include "raster/textureimage.h"
#include "render/lowtrigon.h"

#include <algorithm>
#include <bit>

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
    if (LowTrigon::fits(box, m_xMax, m_yMax) && m_share.owns(box.top) &&
        m_share.owns(box.bottom)) {
        paintLow({a, b, c}, box, number, source);
        return;
    }
    const SortedCorners sorted(a, b, c);
    const auto &s = sorted.s;
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

void NearTrigon::paintLow(const ScreenCorner (&corners)[3], const ScreenBox &box,
                          unsigned int number, const TriangleSource &source)
{
    const LowTrigon low(corners, box);
    const std::uint64_t freeUpper = m_covered->take(box.top, box.left, low.upper);
    const std::uint64_t freeLower = m_covered->take(box.bottom, box.left, low.lower);
    if ((freeUpper | freeLower) == 0)
        return;
    m_colours.begin(source.triangle(number));
    const int from = CoveredPixels::groupOf(box.left);
    const auto add = [&](int row, int first, std::uint64_t bits) {
        if (bits != 0)
            m_colours.add(row, first, from, bits);
    };
    const auto lowest = [from](std::uint64_t bits) {
        return from + std::countr_zero(bits);
    };
    // The upper part begins with the first of the corners on the upper row, whose normal
    // is its own; the others of that row have theirs added up from the left.
    const int highest = corners[0].row == box.top   ? corners[0].x
                        : corners[1].row == box.top ? corners[1].x
                                                    : corners[2].x;
    const std::uint64_t own = CoveredPixels::bitOf(highest);
    add(box.top, highest, freeUpper & own);
    add(box.top, low.flat ? corners[2].x : lowest(low.ends[0]), freeUpper & ~own);
    if (!low.flat)
        add(box.bottom, lowest(low.ends[1]), freeLower);
}
