#include "render/colourloops.h"

#include "base/alsowide.h"
#include "base/truncate.h"
#include "render/transformation.h"

#include <cmath>

namespace {

// A number that changes evenly over the screen and has the values m0 to m2 at the
// corners; the mean of the values if the corners lie on a line. Functions that loops call
// are always part of them: a call would end the vectors.
struct Ramp {
    double acrossX, acrossY, origin;
};

[[gnu::always_inline]] inline Ramp rampThrough(double x0, double y0, double x1, double y1,
                                               double x2, double y2, double m0, double m1,
                                               double m2)
{
    // Twice that of the triangle, with a sign.
    const double area = x1 * y2 + x2 * y0 + x0 * y1 - x2 * y1 - x0 * y2 - x1 * y0;
    const bool onALine = area == 0.0;
    const double by = onALine ? 1.0 : area;
    const double acrossX =
        (y0 * m2 + y2 * m1 + y1 * m0 - y1 * m2 - y2 * m0 - y0 * m1) / by;
    const double acrossY =
        (x0 * m1 + x1 * m2 + x2 * m0 - x2 * m1 - x0 * m2 - x1 * m0) / by;
    const double origin = (x0 * y1 * m2 + x2 * y0 * m1 + x1 * y2 * m0 - x2 * y1 * m0 -
                           x0 * y2 * m1 - x1 * y0 * m2) /
                          by;
    return {onALine ? 0.0 : acrossX, onALine ? 0.0 : acrossY,
            onALine ? (m0 + m1 + m2) / 3 : origin};
}

// The same as truncatedOrLowest(), without a way around the conversion.
[[gnu::always_inline]] inline std::int32_t truncatedInLoop(double v)
{
    const bool fits = v > -2147483649.0 && v < 2147483648.0;
    return static_cast<std::int32_t>(fits ? v : -2147483648.0);
}

ALSO_WIDE
void makeRamps(TriangleArrays &t)
{
    for (int axis = 0; axis < 3; ++axis) {
        for (int i = 0; i < t.count; ++i) {
            const Ramp ramp =
                rampThrough(t.column[0][i], t.row[0][i], t.column[1][i], t.row[1][i],
                            t.column[2][i], t.row[2][i], t.normal[0][axis][i],
                            t.normal[1][axis][i], t.normal[2][axis][i]);
            t.acrossX[axis][i] = ramp.acrossX;
            t.acrossY[axis][i] = ramp.acrossY;
            t.origin[axis][i] = ramp.origin;
        }
    }
}

ALSO_WIDE
void makePlanes(TriangleArrays &t, C4Vector observer)
{
    for (int i = 0; i < t.count; ++i) {
        const double ax = t.vertex[0][0][i], ay = t.vertex[0][1][i];
        const double az = t.vertex[0][2][i];
        const EbenenMatrix plane = {ax - t.vertex[1][0][i],
                                    ay - t.vertex[1][1][i],
                                    az - t.vertex[1][2][i],
                                    ax - t.vertex[2][0][i],
                                    ay - t.vertex[2][1][i],
                                    az - t.vertex[2][2][i],
                                    0.0};
        t.qx[i] = plane.qx;
        t.qy[i] = plane.qy;
        t.qz[i] = plane.qz;
        t.rx[i] = plane.rx;
        t.ry[i] = plane.ry;
        t.rz[i] = plane.rz;
        t.numerator[i] =
            plane.determinant(ax - observer.x, ay - observer.y, az - observer.z);
    }
}

} // namespace

void setUpTriangles(TriangleArrays &t, const Transformation &camera,
                    const FrameLight &light)
{
    makeRamps(t);
    makePlanes(t, camera.Beobachter());
    for (int i = 0; i < t.count; ++i) {
        t.keep[i] = 1 - t.dust[i];
        t.dustGrey[i] = truncatedOrLowest(light.brightness * 255.0 * t.dust[i]);
    }
}

ALSO_WIDE
void lightPixels(PixelArrays &p, const FrameLight &light)
{
    const C4Vector l = light.direction;
    const double one = 1.0; // w of a normal
    for (int i = 0; i < p.count; ++i) {
        const double x = p.normalX[i], y = p.normalY[i], z = p.normalZ[i];
        // The light points along its travel, hence the minus signs.
        p.intensity[i] =
            (-y * l.y - x * l.x - z * l.z - one * l.w) / std::sqrt(z * z + y * y + x * x);
    }
}

ALSO_WIDE
void castRays(const PixelArrays &p, const Transformation &camera, double besideX,
              double besideY, PixelHits &hits)
{
    const Transformation::RayCaster caster = camera.rayCaster();
    const C4Vector observer = camera.Beobachter();
    for (int i = 0; i < p.count; ++i) {
        const PixelRay d = caster.ray(p.column[i] + besideX, p.row[i] + besideY);
        const EbenenMatrix plane = {p.qx[i], p.qy[i], p.qz[i], p.rx[i],
                                    p.ry[i], p.rz[i], 0.0};
        const double t = p.numerator[i] / plane.determinant(d.x, d.y, d.z);
        hits.x[i] = observer.x + t * d.x;
        hits.y[i] = observer.y + t * d.y;
    }
}

ALSO_WIDE
void shadeTexture(PixelArrays &p)
{
    for (int i = 0; i < p.count; ++i) {
        const double intensity = p.intensity[i], keep = p.keep[i];
        const auto dust = static_cast<std::uint32_t>(p.dustGrey[i]);
        const std::uint32_t colour = p.colour[i];
        const auto lit = [=](int shift) __attribute__((always_inline))
        {
            const auto byte =
                static_cast<double>(static_cast<std::int32_t>(colour >> shift & 0xFFu));
            const std::int32_t value = truncatedInLoop(byte * intensity * keep);
            return ((static_cast<std::uint32_t>(value) + dust) & 0xFFu) << shift;
        };
        const std::uint32_t bright = 0xFF000000u | lit(16) | lit(8) | lit(0);
        const std::uint32_t dark = 0xFF000000u | (dust & 0xFFu) * 0x010101u;
        p.colour[i] = intensity < 0 ? dark : bright;
    }
}

ALSO_WIDE
void shadeWhite(PixelArrays &p)
{
    for (int i = 0; i < p.count; ++i) {
        const double intensity = p.intensity[i];
        const auto dust = static_cast<std::uint32_t>(p.dustGrey[i]);
        const auto lit =
            static_cast<std::uint32_t>(truncatedInLoop(intensity * 255.0 * p.keep[i]));
        const std::uint32_t grey = intensity < 0 ? dust : lit + dust;
        p.colour[i] = 0xFF000000u | (grey & 0xFFu) * 0x010101u;
    }
}
