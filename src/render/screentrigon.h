#pragma once

#include "base/vectors.h"
#include "raster/texturesampler.h"
#include "render/rowshare.h"

#include <QRgb>

#include <cstdint>
#include <optional>
#include <utility>

class TextureImage;
class Transformation;

/// A corner of a triangle on the screen, in whole pixels.
struct ScreenCorner {
    int x = 0, row = 0;
};

/// A triangle with all that its pixels take their colour from.
struct Triangle {
    ScreenCorner screen[3];
    C4Vector vertices[3]; // world
    C4Vector normals[3];  // unit vectors
    double dust = 0.0;    // its weight
};

/// Knows the triangles by the numbers that were painted.
class TriangleSource {
public:
    virtual ~TriangleSource() = default;
    [[nodiscard]] virtual Triangle triangle(unsigned int number) const = 0;
};

/// Fills the triangles of one frame.
///
/// There is no depth buffer: triangles come far ones first, and the last one painted
/// on a pixel is the one that is seen. So painting a triangle only leaves its number
/// in the pixels of the target: Rechnen(). When the picture is to be seen, each pixel
/// that holds a number gets the colour of that triangle, once: resolve(). A number is
/// told from a colour by its upper byte, which is 0xFF in every colour.
///
/// A triangle is filled scanline by scanline between two edges: upward from its
/// lowest corner to the row of the middle one, then downward from the highest corner
/// to the same row. Normals are interpolated over the screen; the texture is read
/// where the pixel's own ray meets the plane of the triangle.
class ScreenTrigon {
public:
    /// Numbers of triangles are below this.
    static constexpr unsigned int NumberLimit = 0xFF000000u;

    ScreenTrigon(TextureImage *target, const TextureImage *texture, C4Vector light,
                 const Transformation *camera, int quality);

    /// The rows that are painted; all of them at first.
    void setShare(RowShare rows) { share = rows; }

    /// Paints the number of a triangle on its pixels.
    void Rechnen(ScreenCorner a, ScreenCorner b, ScreenCorner c, unsigned int number);
    /// Gives every pixel of some rows that holds a number its colour. The rows need not
    /// be of the share.
    void resolve(const TriangleSource &source, RowRange rows);
    /// How many pixels of some rows hold a number.
    [[nodiscard]] std::int64_t countNumbers(RowRange rows) const;
    /// How many pixels were painted since the last call; one painted twice counts twice.
    [[nodiscard]] std::int64_t takePainted() { return std::exchange(painted, 0); }

private:
    struct Edges;
    struct Ramp;
    struct Shading;

    template <typename Rows, typename FillRow>
    void fillUpward(const ScreenCorner (&s)[3], Rows rows, const FillRow &fillRow) const;
    template <typename Rows, typename FillRow>
    void fillDownward(const ScreenCorner (&s)[3], Rows rows,
                      const FillRow &fillRow) const;
    /// Rechnen() for a triangle of one row or two, its corners sorted.
    void paintLow(const ScreenCorner (&s)[3], unsigned int number);
    void shade(Triangle &triangle, unsigned int number, RowRange rows);
    void shadeRow(int row, const Edges &edges, const Shading &shading,
                  unsigned int number);
    [[nodiscard]] QRgb colourOf(int x, int row, const C4Vector &normal,
                                const Shading &shading) const;
    [[nodiscard]] unsigned int *pixels(int row) const;

    int xMax, yMax;              // last column and row of the target
    C4Vector Licht;              // unit vector along the travel of the light
    double Helligkeit;           // how bright dust and flat land are under this light
    const Transformation *Trafo; // the camera
    std::optional<TextureSampler> Textur; // source of colour; white without
    int Qualitaet;                        // 0 low, 1 high, 2 extra high
    RowShare share;
    std::int64_t painted = 0;
    unsigned char *bits; // of the target
    long long bytesPerLine;
};
