#include "render/colourbatch.h"

#include "base/alsowide.h"
#include "base/vectormath.h"
#include "raster/textureimage.h"
#include "render/transformation.h"

#include <bit>
#include <cmath>

ColourBatch::ColourBatch(TextureImage *target, const TextureImage *texture,
                         C4Vector light, const Transformation *camera, int quality)
    : m_camera(camera), m_quality(quality), m_bits(target->bits()),
      m_bytesPerLine(target->bytesPerLine())
{
    m_light.direction = normalized(light);
    m_light.brightness = std::abs(m_light.direction.z); // flat land faces straight up
    if (texture)
        m_texture.emplace(*texture);
}

void ColourBatch::begin(const Triangle &triangle)
{
    if (m_triangles.count == TriangleArrays::Most)
        flush();
    const CornerOrder order =
        orderByRow(triangle.screen[0], triangle.screen[1], triangle.screen[2]);
    TriangleArrays &t = m_triangles;
    const int slot = t.count++;
    for (int k = 0; k < 3; ++k) {
        t.column[k][slot] = triangle.screen[order[k]].x;
        t.row[k][slot] = triangle.screen[order[k]].row;
        const C4Vector &vertex = triangle.vertices[order[k]];
        t.vertex[k][0][slot] = vertex.x;
        t.vertex[k][1][slot] = vertex.y;
        t.vertex[k][2][slot] = vertex.z;
        const C4Vector &normal = triangle.normals[order[k]];
        t.normal[k][0][slot] = normal.x;
        t.normal[k][1][slot] = normal.y;
        t.normal[k][2][slot] = normal.z;
    }
    t.dust[slot] = triangle.dust;
}

void ColourBatch::add(int row, int first, int from, std::uint64_t bits)
{
    // At least as many as there are, quicker than a count on each processor.
    const int count = static_cast<int>(std::bit_width(bits)) - std::countr_zero(bits);
    if (m_pixelCount + count > PixelArrays::Most || m_runCount == PixelArrays::Most)
        makeRoom();
    m_runs[m_runCount++] = {m_triangles.count - 1, row, first, from, bits};
    m_pixelCount += count;
}

// The triangle in hand stays, as the first.
void ColourBatch::makeRoom()
{
    TriangleArrays &t = m_triangles;
    const int last = t.count - 1;
    flush();
    const auto keep = [last](TriangleArrays::Field<double> &field) {
        field[0] = field[last];
    };
    for (int k = 0; k < 3; ++k) {
        keep(t.column[k]);
        keep(t.row[k]);
        for (int axis = 0; axis < 3; ++axis) {
            keep(t.vertex[k][axis]);
            keep(t.normal[k][axis]);
        }
    }
    keep(t.dust);
    t.count = 1;
}

void ColourBatch::flush()
{
    if (m_runCount > 0) {
        setUpTriangles(m_triangles, *m_camera, m_light);
        expandRuns();
        lightPixels(m_pixels, m_light);
        if (m_texture) {
            readTexture();
            shadeTexture(m_pixels);
        } else {
            shadeWhite(m_pixels);
        }
        const PixelArrays &p = m_pixels;
        for (int i = 0; i < p.count; ++i)
            reinterpret_cast<std::uint32_t *>(
                m_bits + p.row[i] * m_bytesPerLine)[p.column[i]] = p.colour[i];
    }
    m_runCount = 0;
    m_pixelCount = 0;
    m_triangles.count = 0;
}

// Normals are added up from the left end of a row: a product would round differently, and
// pictures stay the same to the bit.
void ColourBatch::expandRuns()
{
    PixelArrays &p = m_pixels;
    const TriangleArrays &t = m_triangles;
    int pixel = 0;
    double normal[3] = {};
    int at = 0; // column of that normal
    for (int k = 0; k < m_runCount; ++k) {
        const Run &run = m_runs[k];
        const int slot = run.triangle;
        const double step[3] = {t.acrossX[0][slot], t.acrossX[1][slot],
                                t.acrossX[2][slot]};
        const Run *const before = k > 0 ? &m_runs[k - 1] : nullptr;
        if (!before || before->triangle != slot || before->row != run.row ||
            before->first != run.first || before->from >= run.from) {
            at = run.first;
            for (int axis = 0; axis < 3; ++axis)
                normal[axis] = step[axis] * at + t.acrossY[axis][slot] * run.row +
                               t.origin[axis][slot];
        }
        for (std::uint64_t bits = run.bits; bits != 0; bits &= bits - 1) {
            const int column = run.from + std::countr_zero(bits);
            for (; at < column; ++at)
                for (int axis = 0; axis < 3; ++axis)
                    normal[axis] += step[axis];
            p.column[pixel] = column;
            p.row[pixel] = run.row;
            p.normalX[pixel] = normal[0];
            p.normalY[pixel] = normal[1];
            p.normalZ[pixel] = normal[2];
            p.qx[pixel] = t.qx[slot];
            p.qy[pixel] = t.qy[slot];
            p.qz[pixel] = t.qz[slot];
            p.rx[pixel] = t.rx[slot];
            p.ry[pixel] = t.ry[slot];
            p.rz[pixel] = t.rz[slot];
            p.numerator[pixel] = t.numerator[slot];
            p.keep[pixel] = t.keep[slot];
            p.dustGrey[pixel] = t.dustGrey[slot];
            ++pixel;
        }
    }
    p.count = pixel;
}

void ColourBatch::readTexture()
{
    castRays(m_pixels, *m_camera, 0.0, 0.0, m_hits[0]);
    if (m_quality < 1)
        readNearest();
    else
        readSmoothly();
}

void ColourBatch::readNearest()
{
    PixelArrays &p = m_pixels;
    const TextureSampler &texture = *m_texture;
    for (int i = 0; i < p.count; ++i)
        p.colour[i] = texture.nearest({m_hits[0].x[i], m_hits[0].y[i], 0.0, 1.0});
}

// Antialiased: one ray, or the mean of five points, of which rays make three and
// mirroring two.
ALSO_WIDE
void ColourBatch::readSmoothly()
{
    PixelArrays &p = m_pixels;
    const TextureSampler &texture = *m_texture;
    castRays(p, *m_camera, -0.25, -0.25, m_hits[1]);
    castRays(p, *m_camera, 0.25, -0.25, m_hits[2]);
    const auto &[here, left, right] = m_hits;
    for (int i = 0; i < p.count; ++i) {
        const C4Vector hit = {here.x[i], here.y[i], 0.0, 1.0};
        if (std::abs(here.x[i] - left.x[i]) < 1.0 &&
            std::abs(here.y[i] - left.y[i]) < 1.0) {
            p.colour[i] = texture.smooth(hit); // covers less than a texel or so
            continue;
        }
        const C4Vector points[5] = {
            hit,
            {left.x[i], left.y[i], 0.0, 1.0},
            {right.x[i], right.y[i], 0.0, 1.0},
            {2 * here.x[i] - right.x[i], 2 * here.y[i] - right.y[i], 0.0, 1.0},
            {2 * here.x[i] - left.x[i], 2 * here.y[i] - left.y[i], 0.0, 1.0}};
        p.colour[i] = texture.average(points);
    }
}
