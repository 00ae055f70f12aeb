#pragma once

#include "base/vectors.h"
#include "raster/texturesampler.h"
#include "render/colourarrays.h"
#include "render/colourloops.h"
#include "render/trigonrows.h"

#include <array>
#include <cstdint>
#include <optional>

class TextureImage;
class Transformation;

/// A triangle with all that its pixels take their colour from.
struct Triangle {
    ScreenCorner screen[3];
    C4Vector vertices[3]; // world
    C4Vector normals[3];  // unit vectors
    double dust = 0.0;    // its weight
};

/// Gives pixels their colours, many at a time: a pixel of a mesh has two or three
/// neighbours in its triangle, so those of many triangles are gathered first.
///
/// A colour is the texture, read where the ray of the pixel meets the plane of the
/// triangle, times the light on a normal that changes evenly over the screen, plus dust.
class ColourBatch {
public:
    /// Borrows all of it. White without a texture; quality 0 low, 1 and 2 high.
    ColourBatch(TextureImage *target, const TextureImage *texture, C4Vector light,
                const Transformation *camera, int quality);

    /// Begins a triangle, to which the pixels that follow belong. Its corners are sorted.
    void begin(const Triangle &triangle);
    /// Adds pixels of a row that the triangle begins at the column `first`: bit 0 stands
    /// for the column `from`, which is not before it. A row is added from left to right.
    void add(int row, int first, int from, std::uint64_t bits);
    /// Writes the colours of all pixels that were added.
    void flush();

private:
    // Pixels of one row of a triangle.
    struct Run {
        int triangle, row, first, from;
        std::uint64_t bits;
    };

    void makeRoom();
    void expandRuns();
    void readTexture();
    void readNearest();
    void readSmoothly();

    TriangleArrays m_triangles;
    PixelArrays m_pixels;
    PixelHits m_hits[3]; // of the pixels and of places a quarter beside them
    std::array<Run, PixelArrays::Most> m_runs;
    int m_runCount = 0;
    int m_pixelCount = 0; // of the runs
    const Transformation *m_camera;
    FrameLight m_light;
    std::optional<TextureSampler> m_texture;
    int m_quality;
    unsigned char *m_bits; // of the target
    long long m_bytesPerLine;
};
