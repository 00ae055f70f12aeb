// How triangles become pixels where far ones come first, so that the last one painted on
// a pixel is the one that is seen.
//
// 1. Rechnen() fills a triangle row by row between its edges, with its number alone: to
//    be hidden later costs it no colour.
// 2. resolve() looks for the numbers that remain, fills each of these triangles once more
//    and colours the pixels that still hold its number.

#include "render/screentrigon.h"

#include "raster/textureimage.h"

#include <algorithm>

namespace {

// Stands in a pixel whose colour is on its way: no number.
constexpr unsigned int Collected = 0xFF000000u;

} // namespace

ScreenTrigon::ScreenTrigon(TextureImage *target, const TextureImage *texture,
                           C4Vector light, const Transformation *camera, int quality)
    : xMax(target->width() - 1), yMax(target->height() - 1), bits(target->bits()),
      bytesPerLine(target->bytesPerLine()),
      colours(target, texture, light, camera, quality)
{
}

unsigned int *ScreenTrigon::pixels(int row) const
{
    return reinterpret_cast<unsigned int *>(bits + row * bytesPerLine);
}

void ScreenTrigon::Rechnen(ScreenCorner a, ScreenCorner b, ScreenCorner c,
                           unsigned int number)
{
    const SortedCorners sorted(a, b, c);
    const auto &s = sorted.s;
    const auto paint = [this, number](int row, int first, int last) {
        unsigned int *const p = pixels(row);
        for (int x = first; x <= last; ++x)
            p[x] = number;
        painted += std::max(last - first + 1, 0);
    };
    if (isLow(s)) {
        fillLow(s, [&](int row, int from, int to) {
            if (row >= 0 && row <= yMax && share.owns(row))
                paint(row, std::max(std::min(from, to), 0),
                      std::min(std::max(from, to), xMax));
        });
        return;
    }
    const auto paintRow = [&](int row, const TrigonEdges &edges) {
        paint(row, edges.first(), edges.last(xMax));
    };
    fillUpward(s, yMax, share, paintRow);
    fillDownward(s, yMax, share, paintRow);
}

void ScreenTrigon::resolve(const TriangleSource &source, RowRange rows)
{
    for (int row = rows.first; row <= rows.last; ++row) {
        const unsigned int *const p = pixels(row);
        for (int x = 0; x <= xMax; ++x) {
            const unsigned int number = p[x];
            if (number < NumberLimit)
                collect(source.triangle(number), number, rows);
        }
    }
    colours.flush();
}

std::int64_t ScreenTrigon::countNumbers(RowRange rows) const
{
    std::int64_t count = 0;
    for (int row = rows.first; row <= rows.last; ++row) {
        const unsigned int *const p = pixels(row);
        int inRow = 0;
        for (int x = 0; x <= xMax; ++x)
            inRow += p[x] < NumberLimit ? 1 : 0;
        count += inRow;
    }
    return count;
}

// Both parts of a triangle fill the middle row, and normals are added up from the left
// end of each. The part that was painted last decides, so it comes first here: a pixel
// that is collected no longer holds the number.
void ScreenTrigon::collect(const Triangle &triangle, unsigned int number, RowRange rows)
{
    colours.begin(triangle);
    const SortedCorners sorted(triangle.screen[0], triangle.screen[1],
                               triangle.screen[2]);
    const auto &s = sorted.s;
    const auto collectEdges = [&](int row, const TrigonEdges &edges) {
        collectRow(row, edges.first(), edges.last(xMax), number);
    };
    fillDownward(s, yMax, rows, collectEdges);
    fillUpward(s, yMax, rows, collectEdges);
}

void ScreenTrigon::collectRow(int row, int first, int last, unsigned int number)
{
    unsigned int *const p = pixels(row);
    for (int from = first; from <= last; from += 64) {
        const int count = std::min(last - from + 1, 64);
        std::uint64_t held = 0;
        for (int k = 0; k < count; ++k) {
            if (p[from + k] == number) {
                held |= std::uint64_t(1) << k;
                p[from + k] = Collected;
            }
        }
        if (held != 0)
            colours.add(row, first, from, held);
    }
}
