#pragma once

#include "raster/texturesampler.h"
#include "render/transformation.h"

#include <cmath>

/// Colours pixels by casting their rays onto the plane of one triangle.
class TrianglePlane {
public:
    /// The plane through three points, which SetzeDreiecksEckpunkte() of the camera
    /// prepared.
    TrianglePlane(const Transformation &camera, const TextureSampler &texture,
                  const EbenenMatrix &plane)
        : m_camera(camera), m_texture(texture), m_plane(plane),
          m_observer(camera.Beobachter())
    {
    }

    /// One-ray colour of a pixel.
    [[nodiscard]] QRgb FarbeImDreieck2(int x, int y) const
    {
        return m_texture.nearest(castRay(x, y));
    }

    /// Antialiased colour of a pixel: one ray, or the mean of five points, of which rays
    /// make three and mirroring two.
    [[nodiscard]] QRgb FarbeImDreieck1(int x, int y) const
    {
        C4Vector p[5];
        p[0] = castRay(x, y);
        p[1] = castRay(x - 0.25, y - 0.25);
        if (std::abs(p[0].x - p[1].x) < 1.0 && std::abs(p[0].y - p[1].y) < 1.0)
            return m_texture.smooth(p[0]); // covers less than a texel or so
        p[2] = castRay(x + 0.25, y - 0.25);
        p[3].x = 2 * p[0].x - p[2].x;
        p[3].y = 2 * p[0].y - p[2].y;
        p[4].x = 2 * p[0].x - p[1].x;
        p[4].y = 2 * p[0].y - p[1].y;
        return m_texture.average(p);
    }

private:
    [[nodiscard]] C4Vector castRay(double px, double py) const
    {
        const PixelRay d = m_camera.ray(px, py);
        const double t = m_plane.numerator / m_plane.determinant(d.x, d.y, d.z);
        return {m_observer.x + t * d.x, m_observer.y + t * d.y, 0.0, 1.0};
    }

    const Transformation &m_camera;
    const TextureSampler &m_texture;
    const EbenenMatrix m_plane;
    const C4Vector m_observer;
};
