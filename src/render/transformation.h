#pragma once

#include "base/c4matrix.h"

class QWidget;
class TextureImage;

/// Where a screen position looks: from the observer in a direction.
struct PixelRay {
    double x, y, z;
};

/// What casts rays onto the plane of one triangle.
struct EbenenMatrix {
    double qx, qy, qz; // first corner minus second
    double rx, ry, rz; // first corner minus third
    double numerator;  // determinant with first corner minus observer

    /// The determinant of (x, y, z) and the two differences, as columns. The order of
    /// its terms is part of the results.
    [[nodiscard]] double determinant(double x, double y, double z) const
    {
        return qx * ry * z + rx * y * qz + x * qy * rz - qy * rx * z - x * ry * qz -
               y * rz * qx;
    }
};

/// The camera of a render run.
///
/// Maps world points to the screen by a matrix, and screen positions to world rays
/// by an observer, a view vector and two unit axes. World x runs east, y north, z up.
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

    [[nodiscard]] QWidget *parent() const { return parentWidget; }
    /// The observer, the view vector and the direction of view.
    [[nodiscard]] C4Vector Beobachter() const { return Position; }
    [[nodiscard]] C4Vector Sichtvektor() const { return Sicht; }
    [[nodiscard]] double Blickrichtung() const { return Richtung; }
    [[nodiscard]] const C4Vector &rightAxis() const { return Rechts; }
    [[nodiscard]] const C4Vector &upAxis() const { return Oben; }
    [[nodiscard]] const C4Vector &light() const { return Licht; }
    [[nodiscard]] const C4Matrix &projection() const { return Projektion; }
    [[nodiscard]] int quarter() const { return Quarter; }

    /// The texture that pixels take their colour from. Borrowed.
    void SetzeTexturDatei(TextureImage *texture) { Textur = texture; }
    [[nodiscard]] TextureImage *texture() const { return Textur; }

    /// World point to whole screen position; 0 on success, 1 if it has none.
    [[nodiscard]] int Bildschirmpunkt(const C4Vector *point, C4Vector *screen) const;

    /// What makes the rays of a frame, in itself: for loops over pixels.
    struct RayCaster {
        C4Vector view, right, up; // as sightline and axes of the camera
        double rollSin, rollCos, middleX, middleY;

        /// Direction of the ray through a screen position.
        [[nodiscard]] PixelRay ray(double px, double py) const
        {
            const double a = px - middleX;
            const double b = -py - middleY;
            const double u = rollCos * a + rollSin * b;
            const double v = rollCos * b - rollSin * a;
            return {view.x + u * right.x + v * up.x, view.y + u * right.y + v * up.y,
                    view.z + u * right.z + v * up.z};
        }
    };
    [[nodiscard]] RayCaster rayCaster() const
    {
        return {Sicht, Rechts, Oben, RollSin, RollCos, MitteX, MitteY};
    }

    /// Direction of the ray through a screen position.
    [[nodiscard]] PixelRay ray(double px, double py) const
    {
        return rayCaster().ray(px, py);
    }

    /// The plane through three points, as the colour of pixels needs it.
    [[nodiscard]] EbenenMatrix
    SetzeDreiecksEckpunkte(const C4Vector &a, const C4Vector &b, const C4Vector &c) const;
    /// Where a pixel's ray meets the plane of three points: writes the point and
    /// returns the ray parameter. Does not ask whether it lies in the triangle.
    double PunktImDreieck(int x, int y, C4Vector *triangle, C4Vector *point) const;

private:
    QWidget *parentWidget;
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
    double RollSin = 0.0;
    double RollCos = 1.0;
    double MitteX = 0.0;            // screen x of the optical centre
    double MitteY = 0.0;            // negated screen row of it
    TextureImage *Textur = nullptr; // borrowed
    C4Matrix Projektion;            // world to homogeneous screen
    int Quarter = 0;                // which quarter of a double-sized view; 0 the whole
};
