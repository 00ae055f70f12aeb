#pragma once

#include "base/c4matrix.h"

#include <cstdint>
#include <vector>

// The loops over the points and cells of one row of the mesh, apart from everything else
// so that the compiler turns them into vector code. Nothing that is written may overlap
// what is read.

/// The points of a row and their neighbours to the south and north, `x` and `z` with one
/// point more on both sides. Neighbours may stand at another x.
struct RowArms {
    const double *x, *xSouth, *xNorth;
    const double *z, *zSouth, *zNorth;
    double y, ySouth, yNorth;
};

/// Unit normals of `count` points: the mean of the four cross products of neighbouring
/// arms. They point up, out of the terrain.
void rowNormals(const RowArms &arms, int count, double *__restrict normalX,
                double *__restrict normalY, double *__restrict normalZ);

/// Where `count` points at y fall on the screen, in whole pixels; what lies behind the
/// observer or too far aside has the column `offScreen`.
void rowOnScreen(const double *x, double y, const double *z, int count,
                 const C4Matrix &projection, std::int16_t offScreen,
                 std::int16_t *__restrict columns, std::int16_t *__restrict rows);

/// The points of the two rows around some cells, and the observer.
struct RowCells {
    const double *x;
    const double *zSouth, *zNorth;
    double ySouth, yNorth;
    const double *middleNorthWest, *middleSouthEast; // of the triangles, x - observer x
    C4Vector observer;
};

/// Which triangles of `count` cells are seen from above: bit 0 the north-west one, bit 1
/// the south-east one. A triangle is if its normal, which here points down into the
/// terrain, and the way from the observer to its middle go the same way.
void rowFacing(const RowCells &cells, int count, std::uint8_t *__restrict facing);

/// Where cells lie on the screen, ends included: an array a side. Of a cell with a corner
/// that is not on the screen it has no meaning.
struct CellBoxes {
    std::vector<std::int16_t> left, right, top, bottom;

    void resize(int cells)
    {
        for (std::vector<std::int16_t> *side : {&left, &right, &top, &bottom})
            side->resize(cells);
    }
};

/// The least and the greatest of the four corners of `count` cells, in columns or in
/// rows.
void rowBounds(const std::int16_t *south, const std::int16_t *north, int count,
               std::int16_t *__restrict least, std::int16_t *__restrict greatest);
