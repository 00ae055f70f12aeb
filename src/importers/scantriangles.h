#pragma once

#include "importers/matrices.h"

class ElevationImage;

/// Fills each triangle, a row of three point indices, with the plane through its
/// corners; a later triangle overwrites an earlier one. Gives 1.
int ScanTriangles(CDoubleMatrix *points, CDoubleVector *z, CIntMatrix *triangles,
                  std::int32_t numTriangles, ElevationImage *image);

/// Fills one triangle, and writes its corners, sorted by y, to standard output.
/// Rows and columns both are clamped to the height of the image. Gives 1.
int scanOneTriangle(double x1, double y1, double z1, double x2, double y2, double z2,
                    double x3, double y3, double z3, ElevationImage *image);

/// True when the two differ by less than 0.00001.
[[nodiscard]] bool approxEqual(double a, double b);
