// How triangles become pixels. They come far ones first, so that the last one painted on
// a pixel is the one that is seen.
//
// 1. Rechnen() fills a triangle row by row between its edges, with its number alone: to
//    be hidden later costs it no colour.
// 2. resolve() looks for the numbers that remain, fills each of these triangles once more
//    and colours the pixels that still hold its number.
//
// A colour is the texture, read where the ray of the pixel meets the plane of the
// triangle, times the light on a normal that changes evenly over the screen, plus dust.

#include "render/screentrigon.h"

#include "base/truncate.h"
#include "base/vectormath.h"
#include "raster/textureimage.h"
#include "render/transformation.h"
#include "render/triangleplane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

template <typename Swap> void sortByRow(ScreenCorner (&screen)[3], const Swap &swapOthers)
{
    for (const auto &[i, k] : {std::pair{0, 1}, {0, 2}, {1, 2}}) {
        if (screen[k].row < screen[i].row) {
            std::swap(screen[i], screen[k]);
            swapOthers(i, k);
        }
    }
}

QRgb grey(unsigned int v) { return 0xFF000000u | (v & 0xFFu) * 0x010101u; }

} // namespace

// Left and right end of the row in hand, moved along the two edges of a part. Slopes are
// in columns a row. A part without height paints one pixel, its corner: the other part
// fills that row where it has height.
struct ScreenTrigon::Edges {
    explicit Edges(int start) : left(start), right(start) {}
    Edges(int start, double a, double b)
        : left(start), right(start), leftStep(std::min(a, b)), rightStep(std::max(a, b))
    {
    }
    void step()
    {
        left += leftStep;
        right += rightStep;
    }
    [[nodiscard]] int first() const { return std::max(static_cast<int>(left), 0); }
    [[nodiscard]] int last(int most) const
    {
        return std::min(static_cast<int>(right), most);
    }

    double left, right;
    double leftStep = 0.0, rightStep = 0.0;
};

// A number that changes evenly over the screen.
struct ScreenTrigon::Ramp {
    // The one that has these values at the corners; the mean of the values if the
    // corners lie on a line.
    Ramp(const ScreenCorner (&screen)[3], double m0, double m1, double m2)
    {
        const double x0 = screen[0].x, y0 = screen[0].row;
        const double x1 = screen[1].x, y1 = screen[1].row;
        const double x2 = screen[2].x, y2 = screen[2].row;
        // Twice that of the triangle, with a sign.
        const double area = x1 * y2 + x2 * y0 + x0 * y1 - x2 * y1 - x0 * y2 - x1 * y0;
        if (area == 0.0) {
            acrossX = 0.0;
            acrossY = 0.0;
            origin = (m0 + m1 + m2) / 3;
            return;
        }
        acrossX = (y0 * m2 + y2 * m1 + y1 * m0 - y1 * m2 - y2 * m0 - y0 * m1) / area;
        acrossY = (x0 * m1 + x1 * m2 + x2 * m0 - x2 * m1 - x0 * m2 - x1 * m0) / area;
        origin = (x0 * y1 * m2 + x2 * y0 * m1 + x1 * y2 * m0 - x2 * y1 * m0 -
                  x0 * y2 * m1 - x1 * y0 * m2) /
                 area;
    }
    [[nodiscard]] double at(int x, int row) const
    {
        return acrossX * x + acrossY * row + origin;
    }

    double acrossX, acrossY, origin;
};

// What is the same for all pixels of one triangle.
struct ScreenTrigon::Shading {
    Ramp normalX, normalY, normalZ;
    double keep;  // weight of the colour
    int dustGrey; // added to it
    EbenenMatrix plane;
};

ScreenTrigon::ScreenTrigon(TextureImage *target, const TextureImage *texture,
                           C4Vector light, const Transformation *camera, int quality)
    : xMax(target->width() - 1), yMax(target->height() - 1), Licht(normalized(light)),
      Helligkeit(std::abs(Licht.z)), // flat land faces straight up
      Trafo(camera), Qualitaet(quality), bits(target->bits()),
      bytesPerLine(target->bytesPerLine())
{
    if (texture)
        Textur.emplace(*texture);
}

unsigned int *ScreenTrigon::pixels(int row) const
{
    return reinterpret_cast<unsigned int *>(bits + row * bytesPerLine);
}

// The corners are sorted: s[0] is the highest in the picture, s[2] the lowest, and rows
// count downward. `rows`, a RowShare or a RowRange, are those that may be touched.

// The lower part: from the lowest corner up to the row of the middle one. Rows outside
// the picture are passed over, yet the edges advance step by step through them: a product
// would round differently, and pictures stay the same to the bit.
template <typename Rows, typename FillRow>
void ScreenTrigon::fillUpward(const ScreenCorner (&s)[3], Rows rows,
                              const FillRow &fillRow) const
{
    const int first = std::max(s[1].row, 0);
    const bool oneRow = s[2].row == s[1].row;
    Edges edges = oneRow ? Edges(s[2].x)
                         : Edges(s[2].x, double(s[1].x - s[2].x) / (s[2].row - s[1].row),
                                 double(s[0].x - s[2].x) / (s[2].row - s[0].row));
    for (int row = s[2].row; row >= first; --row, edges.step())
        if (row <= yMax && rows.owns(row))
            fillRow(row, edges);
}

// The upper part: from the highest corner down to the same row, which is thus filled
// twice.
template <typename Rows, typename FillRow>
void ScreenTrigon::fillDownward(const ScreenCorner (&s)[3], Rows rows,
                                const FillRow &fillRow) const
{
    const int last = std::min(s[1].row, yMax);
    const bool oneRow = s[0].row == s[1].row;
    Edges edges = oneRow ? Edges(s[0].x)
                         : Edges(s[0].x, double(s[0].x - s[1].x) / (s[0].row - s[1].row),
                                 double(s[0].x - s[2].x) / (s[0].row - s[2].row));
    for (int row = s[0].row; row <= last; ++row, edges.step())
        if (row >= 0 && rows.owns(row))
            fillRow(row, edges);
}

void ScreenTrigon::Rechnen(ScreenCorner a, ScreenCorner b, ScreenCorner c,
                           unsigned int number)
{
    ScreenCorner s[3] = {a, b, c};
    sortByRow(s, [](int, int) {});
    if (s[2].row - s[0].row <= 1)
        return paintLow(s, number);
    const auto paintRow = [this, number](int row, const Edges &edges) {
        unsigned int *const p = pixels(row);
        const int first = edges.first();
        const int last = edges.last(xMax);
        for (int x = first; x <= last; ++x)
            p[x] = number;
        painted += std::max(last - first + 1, 0);
    };
    fillUpward(s, share, paintRow);
    fillDownward(s, share, paintRow);
}

// Most triangles of a mesh are that low. With edges over one row at most there is nothing
// to round: a row reaches from corner to corner. That is what the general way comes to,
// also where all corners lie on one row, of which it paints the first and the last alone.
void ScreenTrigon::paintLow(const ScreenCorner (&s)[3], unsigned int number)
{
    const auto paint = [this, number](int row, int from, int to) {
        if (row < 0 || row > yMax || !share.owns(row))
            return;
        const int first = std::max(std::min(from, to), 0);
        const int last = std::min(std::max(from, to), xMax);
        unsigned int *const p = pixels(row);
        for (int x = first; x <= last; ++x)
            p[x] = number;
        painted += std::max(last - first + 1, 0);
    };
    const bool flat = s[0].row == s[2].row;
    paint(s[0].row, s[0].x, !flat && s[1].row == s[0].row ? s[1].x : s[0].x);
    paint(s[2].row, s[2].x, !flat && s[1].row == s[2].row ? s[1].x : s[2].x);
}

void ScreenTrigon::resolve(const TriangleSource &source, RowRange rows)
{
    for (int row = rows.first; row <= rows.last; ++row) {
        const unsigned int *const p = pixels(row);
        for (int x = 0; x <= xMax; ++x) {
            if (p[x] >= NumberLimit)
                continue;
            Triangle triangle = source.triangle(p[x]);
            shade(triangle, p[x], rows);
        }
    }
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

void ScreenTrigon::shade(Triangle &t, unsigned int number, RowRange rows)
{
    sortByRow(t.screen, [&t](int i, int k) {
        std::swap(t.vertices[i], t.vertices[k]);
        std::swap(t.normals[i], t.normals[k]);
    });
    const auto &[n0, n1, n2] = t.normals;
    const Shading shading = {
        Ramp(t.screen, n0.x, n1.x, n2.x),
        Ramp(t.screen, n0.y, n1.y, n2.y),
        Ramp(t.screen, n0.z, n1.z, n2.z),
        1 - t.dust,
        truncatedOrLowest(Helligkeit * 255.0 * t.dust),
        Trafo->SetzeDreiecksEckpunkte(t.vertices[0], t.vertices[1], t.vertices[2])};

    // Both parts fill the middle row, and normals are added up from the left end of each.
    // The part that was painted last decides, so it comes first here: a pixel that has
    // its colour no longer holds the number.
    const auto shadeOne = [&](int row, const Edges &edges) {
        shadeRow(row, edges, shading, number);
    };
    fillDownward(t.screen, rows, shadeOne);
    fillUpward(t.screen, rows, shadeOne);
}

void ScreenTrigon::shadeRow(int row, const Edges &edges, const Shading &shading,
                            unsigned int number)
{
    const int first = edges.first();
    const int last = edges.last(xMax);
    C4Vector normal = {shading.normalX.at(first, row), shading.normalY.at(first, row),
                       shading.normalZ.at(first, row), 1.0};
    unsigned int *const p = pixels(row);
    for (int x = first; x <= last; ++x) {
        if (p[x] == number)
            p[x] = colourOf(x, row, normal, shading);
        normal.x += shading.normalX.acrossX;
        normal.y += shading.normalY.acrossX;
        normal.z += shading.normalZ.acrossX;
    }
}

QRgb ScreenTrigon::colourOf(int x, int row, const C4Vector &n,
                            const Shading &shading) const
{
    // The light points along its travel, hence the minus signs.
    const double intensity =
        (-n.y * Licht.y - n.x * Licht.x - n.z * Licht.z - n.w * Licht.w) /
        std::sqrt(n.z * n.z + n.y * n.y + n.x * n.x);
    const auto dust = static_cast<unsigned int>(shading.dustGrey);
    if (intensity < 0)
        return grey(dust);
    if (!Textur) {
        const int lit = truncatedOrLowest(intensity * 255.0 * shading.keep);
        return grey(static_cast<unsigned int>(lit) + dust);
    }
    const TrianglePlane plane(*Trafo, *Textur, shading.plane);
    const QRgb colour =
        Qualitaet < 1 ? plane.FarbeImDreieck2(x, row) : plane.FarbeImDreieck1(x, row);
    const auto lit = [&](int shift) {
        const unsigned int byte = colour >> shift & 0xFFu;
        const int value = truncatedOrLowest(byte * intensity * shading.keep);
        return ((static_cast<unsigned int>(value) + dust) & 0xFFu) << shift;
    };
    return 0xFF000000u | lit(16) | lit(8) | lit(0);
}
