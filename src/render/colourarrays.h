#pragma once

#include <cstdint>

// Triangles and pixels that wait for their colours, an array a field, so that loops work
// on several of them at a time.

/// Triangles that have pixels to be coloured.
struct TriangleArrays {
    static constexpr int Most = 64;
    template <typename Value> using Field = Value[Most];

    int count = 0;

    // Of the corners, sorted from the highest on the screen to the lowest.
    Field<double> column[3], row[3];
    Field<double> vertex[3][3]; // corner, then x, y and z in the world
    Field<double> normal[3][3];
    Field<double> dust; // share of it in the colours

    // Made from these: each part of the normal as a number that changes evenly over the
    // screen, and the plane of the triangle as its pixels' rays need it.
    Field<double> acrossX[3], acrossY[3], origin[3];
    Field<double> qx, qy, qz, rx, ry, rz, numerator;
    Field<double> keep;           // weight of the colour
    Field<std::int32_t> dustGrey; // added to it
};

/// Pixels of such triangles.
struct PixelArrays {
    static constexpr int Most = 256;
    template <typename Value> using Field = Value[Most];

    int count = 0;

    Field<std::int32_t> column, row;
    Field<double> normalX, normalY, normalZ;
    // Of the pixel's triangle.
    Field<double> qx, qy, qz, rx, ry, rz, numerator, keep;
    Field<std::int32_t> dustGrey;

    Field<double> intensity; // of the light on it; below 0 where it shines from behind
    Field<std::uint32_t> colour; // the texture's, then the pixel's
};

/// Where the rays of pixels meet the ground, in world units.
struct PixelHits {
    PixelArrays::Field<double> x, y;
};
