#include "importers/scantriangles.h"

#include "raster/elevationimage.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

namespace {

struct Corner {
    double x, y;
};

// The plane through three corners: z = ((D - x * A) - B * y) / C.
struct Plane {
    double A, B, C, D;

    [[nodiscard]] double at(int x, int y) const { return ((D - x * A) - B * y) / C; }
};

Plane planeThrough(const double (&x)[3], const double (&y)[3], const double (&z)[3])
{
    Plane p;
    p.A = (y[0] - y[1]) * (z[0] - z[2]) - (z[0] - z[1]) * (y[0] - y[2]);
    p.B = (z[0] - z[1]) * (x[0] - x[2]) - (z[0] - z[2]) * (x[0] - x[1]);
    p.C = (x[0] - x[1]) * (y[0] - y[2]) - (y[0] - y[1]) * (x[0] - x[2]);
    p.D = z[0] * p.C + y[0] * p.B + p.A * x[0];
    return p;
}

class TriangleFiller {
public:
    // Sorts the corners by y.
    TriangleFiller(Corner c1, Corner c2, Corner c3, const Plane &plane,
                   ElevationImage &image)
        : m_c1(c1), m_c2(c2), m_c3(c3), m_plane(plane), m_image(image)
    {
        if (m_c1.y > m_c2.y)
            std::swap(m_c1, m_c2);
        if (m_c1.y > m_c3.y)
            std::swap(m_c1, m_c3);
        if (m_c2.y > m_c3.y)
            std::swap(m_c2, m_c3);
    }

    void appendCorners(std::string &text) const
    {
        appendCorner(text, "p1: ", m_c1);
        appendCorner(text, "p2: ", m_c2);
        appendCorner(text, "p3: ", m_c3);
    }

    void fill() const
    {
        if (m_image.isNull())
            return;
        fillPart(clampedRound(m_c3.y), clampedRound(m_c2.y), m_c3, m_c1);
        fillPart(clampedRound(m_c2.y - 1), clampedRound(m_c1.y), m_c1, m_c3);
    }

private:
    static void appendNumber(std::string &text, double v)
    {
        char digits[340]; // the longest double has 309 before the point
        const auto end =
            std::to_chars(digits, digits + sizeof digits, v, std::chars_format::fixed, 6);
        text.append(digits, end.ptr);
    }

    static void appendCorner(std::string &text, const char *name, const Corner &c)
    {
        text += name;
        appendNumber(text, c.x);
        text += '\t';
        appendNumber(text, c.y);
        text += '\n';
    }

    // trunc(t + 0.5), moved into 0 to height - 1, for columns as for rows.
    [[nodiscard]] int clampedRound(double t) const
    {
        const double moved = t + 0.5;
        if (!(moved > 0.0))
            return 0;
        const int last = m_image.height() - 1;
        return moved >= last ? last : static_cast<int>(moved);
    }

    void fillSpan(int row, double xa, double xb) const
    {
        const int first = clampedRound(std::min(xa, xb));
        const int last = clampedRound(std::max(xa, xb));
        for (int x = first; x <= last; ++x)
            m_image.setElevation(x, row, m_plane.at(x, row));
    }

    // Where the line through two corners crosses a row.
    static double crossing(double r, const Corner &a, const Corner &b)
    {
        return ((r - a.y) * b.x - a.x * (r - b.y)) / (b.y - a.y);
    }

    // The rows between the middle corner and an end of the triangle.
    void fillPart(int highest, int lowest, const Corner &end, const Corner &other) const
    {
        for (int r = highest; r >= lowest; --r) {
            if (approxEqual(m_c1.y, m_c3.y))
                fillSpan(r, std::min({m_c1.x, m_c2.x, m_c3.x}),
                         std::max({m_c1.x, m_c2.x, m_c3.x}));
            else if (approxEqual(end.y, m_c2.y))
                fillSpan(r, m_c2.x, end.x);
            else
                fillSpan(r, crossing(r, m_c2, end), crossing(r, other, end));
        }
    }

    Corner m_c1, m_c2, m_c3;
    Plane m_plane;
    ElevationImage &m_image;
};

void writeOut(std::string &text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    text.clear();
}

} // namespace

bool approxEqual(double a, double b) { return std::fabs(a - b) < 0.00001; }

int scanOneTriangle(double x1, double y1, double z1, double x2, double y2, double z2,
                    double x3, double y3, double z3, ElevationImage *image)
{
    const Plane plane = planeThrough({x1, x2, x3}, {y1, y2, y3}, {z1, z2, z3});
    const TriangleFiller filler({x1, y1}, {x2, y2}, {x3, y3}, plane, *image);
    std::string text;
    filler.appendCorners(text);
    writeOut(text);
    filler.fill();
    return 1;
}

int ScanTriangles(CDoubleMatrix *points, CDoubleVector *z, CIntMatrix *triangles,
                  std::int32_t numTriangles, ElevationImage *image)
{
    // Three lines for each of maybe millions of triangles go out in large pieces.
    constexpr std::size_t PieceSize = 1 << 16;
    std::string text;
    text.reserve(PieceSize + 2048);
    for (std::int32_t t = 0; t < numTriangles; ++t) {
        const std::int32_t *const row = triangles->rows[t];
        double x[3], y[3], elevation[3];
        for (int k = 0; k < 3; ++k) {
            x[k] = points->rows[row[k]][0];
            y[k] = points->rows[row[k]][1];
            elevation[k] = z->data[row[k]];
        }
        const TriangleFiller filler({x[0], y[0]}, {x[1], y[1]}, {x[2], y[2]},
                                    planeThrough(x, y, elevation), *image);
        filler.appendCorners(text);
        if (text.size() >= PieceSize)
            writeOut(text);
        filler.fill();
    }
    writeOut(text);
    std::fflush(stdout);
    return 1;
}
