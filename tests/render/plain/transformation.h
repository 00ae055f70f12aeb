#pragma once

#include "base/c4matrix.h"
#include "raster/texturesampler.h"

#include <array>
#include <optional>

class QWidget;

namespace plain {

class ScreenTrigon;

/// Where a screen position looks: from the observer in a direction.
struct PixelRay {
    double x, y, z;
};

/// The camera of a render run.
///
/// Maps world points to the screen by a matrix, and screen positions to world rays
/// by an observer, a view vector and two unit axes. World x runs east, y north, z
/// up. The second road colours pixels: a ray is cast onto the plane of the triangle
/// in hand and the texture is read where it lands.
class Transformation {
public:
    /// Lowest and highest screen position that is drawn to.
    static constexpr double ScreenLimit = 16384.0;

    Transformation(QWidget *parent, C4Vector light, int width, int height);

    /// Sets the camera for one frame; angles in radians, direction clockwise from
    /// north, pitch and roll positive upward and counterclockwise.
    void SetView(C4Vector position, double direction, double pitch, double focal,
                 double roll);
    /// Builds the matrix from the angles, the focal length and the position.
    void BereiteT();

    [[nodiscard]] QWidget *parent() const { return m_parent; }
    /// The observer, the view vector and the direction of view.
    [[nodiscard]] C4Vector Beobachter() const { return Position; }
    [[nodiscard]] C4Vector Sichtvektor() const { return Sicht; }
    [[nodiscard]] double Blickrichtung() const { return Richtung; }
    [[nodiscard]] const C4Vector &rightAxis() const { return Rechts; }
    [[nodiscard]] const C4Vector &upAxis() const { return Oben; }
    [[nodiscard]] const C4Vector &light() const { return Licht; }
    [[nodiscard]] const C4Matrix &projection() const { return Projektion; }
    [[nodiscard]] int quarter() const { return Quarter; }

    /// Sets the texture, which must outlive the camera and not change meanwhile.
    void SetzeTexturDatei(TextureImage *texture);

    /// World point to whole screen position; 0 on success, 1 if it has none.
    [[nodiscard]] int Bildschirmpunkt(const C4Vector *point, C4Vector *screen) const;

    /// Direction of the ray through a screen position.
    [[nodiscard]] PixelRay ray(double px, double py) const
    {
        const double a = px - MitteX;
        const double b = -py - MitteY;
        const double u = RollCos * a + RollSin * b;
        const double v = RollCos * b - RollSin * a;
        return {Sicht.x + u * Rechts.x + v * Oben.x, Sicht.y + u * Rechts.y + v * Oben.y,
                Sicht.z + u * Rechts.z + v * Oben.z};
    }

    /// Tests and projects a triangle and hands it to the filler. `fog` is the
    /// weight of dust. Reorders both arrays.
    void ZeichneEinDreieck(C4Vector *vertices, C4Vector *normals, double fog,
                           ScreenTrigon *trigon);
    /// Prepares the plane through three points for the colour of pixels.
    void SetzeDreiecksEckpunkte(C4Vector &a, C4Vector &b, C4Vector &c);
    void SetzeDreiecksEckpunkte(C4Vector *corners);
    /// Antialiased colour of a pixel.
    void FarbeImDreieck1(int x, int y, unsigned int *colour);
    /// One-ray colour of a pixel.
    void FarbeImDreieck2(int x, int y, unsigned int *colour);
    /// Where a pixel's ray meets the plane of three points: writes the point and
    /// returns the ray parameter. Does not ask whether it lies in the triangle.
    double PunktImDreieck(int x, int y, C4Vector *triangle, C4Vector *point) const;

private:
    // Differences and numerator that cast rays onto one plane.
    struct Plane {
        double px, py, pz; // first corner minus observer
        double qx, qy, qz; // first corner minus second
        double rx, ry, rz; // first corner minus third
        double numerator;
    };

    [[nodiscard]] Plane planeOf(const C4Vector &a, const C4Vector &b,
                                const C4Vector &c) const;
    static double determinant(double px, double py, double pz, const Plane &plane);
    C4Vector castRay(double px, double py) const;

    QWidget *m_parent;
    C4Vector Position;         // observer, a little beside the frame's position
    C4Vector Sicht;            // view vector, as long as the focal length
    double SichtLaenge2 = 0.0; // its squared length
    double Richtung = 0.0;     // direction
    double Neigung = 0.0;      // pitch
    double Brennweite = 0.0;   // focal length in force
    C4Vector Licht;            // unit light vector
    C4Vector Rechts;           // unit vector to the right, horizontal
    C4Vector Oben;             // unit vector upward in the picture plane
    double Verkanten = 0.0;    // roll
    std::array<C4Vector, 5> m_samplePoints; // under the rays of one pixel
    std::array<C4Vector, 3> SchirmEcken;    // screen corners of the triangle in hand
    C4Vector m_centroid;                    // from the observer, of the triangle in hand
    C4Vector m_faceNormal;
    Plane EbenenMatrix{}; // plane terms of the triangle in hand
    double RollSin = 0.0;
    double RollCos = 1.0;
    double MitteX = 0.0;                     // screen x of the optical centre
    double MitteY = 0.0;                     // negated screen row of it
    TextureImage *Textur = nullptr;          // borrowed
    std::optional<TextureSampler> m_sampler; // reads it
    C4Matrix Projektion;                     // world to homogeneous screen
    int Quarter = 0; // which quarter of a double-sized view; 0 the whole
};

} // namespace plain
