#pragma once

#include "base/vectors.h"
#include "render/colourarrays.h"

class Transformation;

// The loops over triangles and over pixels that colours are made by. Each value is made
// by the operations of one triangle or pixel alone, in one order, so that a processor's
// vectors may hold any number of them.

/// What the triangles of a frame have in common.
struct FrameLight {
    C4Vector direction;      ///< unit vector along the travel of the light
    double brightness = 0.0; ///< of dust and flat land under it
};

/// Makes the second half of the fields of all triangles from the first.
void setUpTriangles(TriangleArrays &triangles, const Transformation &camera,
                    const FrameLight &light);
/// Intensity of the light on each pixel.
void lightPixels(PixelArrays &pixels, const FrameLight &light);
/// Where the rays through positions beside the pixels, by so many pixels, meet the planes
/// of their triangles.
void castRays(const PixelArrays &pixels, const Transformation &camera, double besideX,
              double besideY, PixelHits &hits);
/// Colours of the texture become those of the pixels: light and dust are put in.
void shadeTexture(PixelArrays &pixels);
/// Colours of pixels without a texture.
void shadeWhite(PixelArrays &pixels);
