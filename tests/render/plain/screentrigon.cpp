#include "render/plain/screentrigon.h"

#include "base/truncate.h"
#include "base/vectormath.h"
#include "raster/textureimage.h"
#include "render/plain/transformation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace plain {

namespace {

// Factor of a slope whose edge has no height: such a part has one row and takes
// no step.
constexpr double NoHeight = 3.4028234663852886e+38;

// Columns a row moves by along an edge.
double slope(double columns, double rows)
{
    return rows != 0.0 ? columns / rows : columns * NoHeight;
}

} // namespace

// What is the same for all pixels of one triangle.
struct ScreenTrigon::Shading {
    bool constant; // the corners lie on a line: one normal for all pixels
    C4Vector acrossX, acrossY, origin; // normal = acrossX * x + acrossY * y + origin
    C4Vector mean;                     // the normal when constant
    double keep;                       // weight of the colour
    int dust;                          // grey added to it
};

// Left and right end of a row, moved along the two edges of a part.
struct ScreenTrigon::Edges {
    Edges(double start, double a, double b)
        : left(start), right(start), leftStep(std::min(a, b)), rightStep(std::max(a, b))
    {
    }
    void step()
    {
        left += leftStep;
        right += rightStep;
    }
    double left, right;
    double leftStep, rightStep;
};

ScreenTrigon::ScreenTrigon(TextureImage *target, TextureImage *texture, int x0, int y0,
                           int width, int height, C4Vector light, Transformation *camera,
                           int quality)
    : xMin(x0), yMin(y0), xMax(width - 1), yMax(height - 1), Licht(normalized(light)),
      Helligkeit(std::abs(Licht.x * 0 + Licht.y * 0 + Licht.z + 0 * Licht.w)),
      Ziel(target), Textur(texture), Trafo(camera), Qualitaet(quality),
      m_rows(target->bits()), m_bytesPerLine(target->bytesPerLine())
{
}

void ScreenTrigon::sortByRow(C4Vector *screen, C4Vector *vertices, C4Vector *normals)
{
    for (const auto &[i, k] : {std::pair{0, 1}, {0, 2}, {1, 2}}) {
        if (screen[k].y < screen[i].y) {
            std::swap(screen[i], screen[k]);
            std::swap(vertices[i], vertices[k]);
            std::swap(normals[i], normals[k]);
        }
    }
}

void ScreenTrigon::Rechnen(C4Vector *screen, C4Vector *vertices, C4Vector *normals,
                           double fog)
{
    sortByRow(screen, vertices, normals);
    const double x0 = screen[0].x, y0 = screen[0].y;
    const double x1 = screen[1].x, y1 = screen[1].y;
    const double x2 = screen[2].x, y2 = screen[2].y;
    const C4Vector &n0 = normals[0];
    const C4Vector &n1 = normals[1];
    const C4Vector &n2 = normals[2];

    const double D = x1 * y2 + x2 * y0 + x0 * y1 - x2 * y1 - x0 * y2 - x1 * y0;
    Shading shading{};
    shading.constant = D == 0.0;
    if (shading.constant) {
        shading.mean = {(n0.x + n1.x + n2.x) / 3, (n0.y + n1.y + n2.y) / 3,
                        (n0.z + n1.z + n2.z) / 3, (n0.w + n1.w + n2.w) / 3};
    } else {
        const auto interpolate = [&](double C4Vector::*part) {
            const double m0 = n0.*part, m1 = n1.*part, m2 = n2.*part;
            shading.acrossX.*part =
                (y0 * m2 + y2 * m1 + y1 * m0 - y1 * m2 - y2 * m0 - y0 * m1) / D;
            shading.acrossY.*part =
                (x0 * m1 + x1 * m2 + x2 * m0 - x2 * m1 - x0 * m2 - x1 * m0) / D;
            shading.origin.*part = (x0 * y1 * m2 + x2 * y0 * m1 + x1 * y2 * m0 -
                                    x2 * y1 * m0 - x0 * y2 * m1 - x1 * y0 * m2) /
                                   D;
        };
        interpolate(&C4Vector::x);
        interpolate(&C4Vector::y);
        interpolate(&C4Vector::z);
    }
    shading.keep = 1 - fog;
    shading.dust = truncatedOrLowest(Helligkeit * 255.0 * fog);

    Trafo->SetzeDreiecksEckpunkte(vertices);
    fillUpward(screen, shading);
    fillDownward(screen, shading);
}

// The lower part of the triangle in the picture: from the lowest corner up to the
// row of the middle one.
void ScreenTrigon::fillUpward(const C4Vector *screen, const Shading &shading)
{
    const C4Vector &s0 = screen[0], &s1 = screen[1], &s2 = screen[2];
    Edges edges(s2.x, slope(s1.x - s2.x, s2.y - s1.y), slope(s0.x - s2.x, s2.y - s0.y));
    const int first = std::max(truncatedOrLowest(s1.y), yMin);
    for (int row = truncatedOrLowest(s2.y); row >= first;) {
        fillRow(row, edges, shading);
        if (--row >= first)
            edges.step();
    }
}

// The upper part: from the highest corner down to the same row, which is thus
// filled twice with the same colours.
void ScreenTrigon::fillDownward(const C4Vector *screen, const Shading &shading)
{
    const C4Vector &s0 = screen[0], &s1 = screen[1], &s2 = screen[2];
    Edges edges(s0.x, slope(s0.x - s1.x, s0.y - s1.y), slope(s0.x - s2.x, s0.y - s2.y));
    const int last = std::min(truncatedOrLowest(s1.y), yMax);
    for (int row = truncatedOrLowest(s0.y); row <= last;) {
        fillRow(row, edges, shading);
        if (++row <= last)
            edges.step();
    }
}

void ScreenTrigon::fillRow(int row, const Edges &edges, const Shading &shading)
{
    if (row < yMin || row > yMax)
        return;
    const int first = std::max(truncatedOrLowest(edges.left), xMin);
    const int end = std::min(truncatedOrLowest(edges.right), xMax);
    C4Vector normal = shading.mean;
    const C4Vector &gx = shading.acrossX;
    if (!shading.constant) {
        const C4Vector &gy = shading.acrossY;
        normal = {gx.x * first + gy.x * row + shading.origin.x,
                  gx.y * first + gy.y * row + shading.origin.y,
                  gx.z * first + gy.z * row + shading.origin.z, 1.0};
    }
    auto *const pixels = reinterpret_cast<unsigned int *>(m_rows + row * m_bytesPerLine);
    for (int x = first; x <= end; ++x) {
        pixels[x] = shade(x, row, normal, shading);
        if (!shading.constant) {
            normal.x += gx.x;
            normal.y += gx.y;
            normal.z += gx.z;
        }
    }
}

unsigned int ScreenTrigon::shade(int x, int row, const C4Vector &n,
                                 const Shading &shading) const
{
    // The light points along its travel, hence the minus signs.
    const double intensity =
        (-n.y * Licht.y - n.x * Licht.x - n.z * Licht.z - n.w * Licht.w) /
        std::sqrt(n.z * n.z + n.y * n.y + n.x * n.x);
    const auto dust = static_cast<unsigned int>(shading.dust);
    const auto grey = [](unsigned int v) { return (v & 0xFFu) * 0x010101u; };
    if (intensity < 0)
        return 0xFF000000u | grey(dust);
    if (!Textur) {
        const int lit = truncatedOrLowest(intensity * 255.0 * shading.keep);
        return 0xFF000000u | grey(static_cast<unsigned int>(lit) + dust);
    }

    unsigned int colour = 0;
    if (Qualitaet < 1)
        Trafo->FarbeImDreieck2(x, row, &colour);
    else
        Trafo->FarbeImDreieck1(x, row, &colour);
    const auto lit = [&](int shift) {
        const unsigned int byte = colour >> shift & 0xFFu;
        const int value = truncatedOrLowest(byte * intensity * shading.keep);
        return ((static_cast<unsigned int>(value) + dust) & 0xFFu) << shift;
    };
    return 0xFF000000u | lit(16) | lit(8) | lit(0);
}

} // namespace plain
