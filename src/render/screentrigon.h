#pragma once

#include "render/colourbatch.h"
#include "render/rowshare.h"

#include <cstdint>
#include <utility>

class TextureImage;
class Transformation;

/// Knows the triangles by the numbers that were painted.
class TriangleSource {
public:
    virtual ~TriangleSource() = default;
    [[nodiscard]] virtual Triangle triangle(unsigned int number) const = 0;
};

/// Fills the triangles of one frame, far ones first.
///
/// There is no depth buffer: the last triangle painted on a pixel is the one that is
/// seen. So painting a triangle only leaves its number in the pixels of the target:
/// Rechnen(). When the picture is to be seen, each pixel that holds a number gets the
/// colour of that triangle, once: resolve(). A number is told from a colour by its upper
/// byte, which is 0xFF in every colour.
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
    /// Gives the pixels of some rows that hold its number to the colours.
    void collect(const Triangle &triangle, unsigned int number, RowRange rows);
    void collectRow(int row, int first, int last, unsigned int number);
    [[nodiscard]] unsigned int *pixels(int row) const;

    int xMax, yMax; // last column and row of the target
    RowShare share;
    std::int64_t painted = 0;
    unsigned char *bits; // of the target
    long long bytesPerLine;
    ColourBatch colours;
};
