#pragma once

#include "base/vectors.h"

class QImage;
class TextureImage;

namespace plain {

class Transformation;

/// Fills the triangles of one frame, scanline by scanline.
///
/// There is no depth buffer: triangles come far ones first, and every pixel
/// replaces what was there. Normals are interpolated over the screen; the colour
/// is read where the pixel's own ray meets the plane of the triangle.
class ScreenTrigon {
public:
    ScreenTrigon(TextureImage *target, TextureImage *texture, int x0, int y0, int width,
                 int height, C4Vector light, Transformation *camera, int quality);
    virtual ~ScreenTrigon() = default;

    /// Fills a triangle given by whole screen corners, world corners and normals;
    /// `fog` is the weight of dust. Reorders all three arrays.
    void Rechnen(C4Vector *screen, C4Vector *vertices, C4Vector *normals, double fog);

private:
    struct Shading;
    struct Edges;

    static void sortByRow(C4Vector *screen, C4Vector *vertices, C4Vector *normals);
    void fillUpward(const C4Vector *screen, const Shading &shading);
    void fillDownward(const C4Vector *screen, const Shading &shading);
    void fillRow(int row, const Edges &edges, const Shading &shading);
    [[nodiscard]] unsigned int shade(int x, int row, const C4Vector &normal,
                                     const Shading &shading) const;

    int xMin, yMin;        // lowest writable column and row
    int xMax, yMax;        // highest writable column and row
    C4Vector Licht;        // unit vector along the travel of the light
    double Helligkeit;     // how bright dust and flat land are under this light
    TextureImage *Ziel;    // target, borrowed
    TextureImage *Textur;  // source of colour, borrowed; may be null
    Transformation *Trafo; // camera, borrowed
    int Qualitaet;         // 0 low, 1 high, 2 extra high
    unsigned char *m_rows; // of the target
    long long m_bytesPerLine;
};

} // namespace plain
