#include "render/meshloops.h"

#include "base/alsowide.h"
#include "render/transformation.h"

#include <algorithm>
#include <cmath>

ALSO_WIDE
void rowNormals(const RowArms &arms, int count, double *__restrict normalX,
                double *__restrict normalY, double *__restrict normalZ)
{
    const auto [x, xs, xn, z, zs, zn, y, ySouth, yNorth] = arms;
    const double sy = ySouth - y;
    const double ny = yNorth - y;
    const double level = 0.0; // y of the arms to the east and west
    for (int k = 0; k < count; ++k) {
        const double sx = xs[k] - x[k], sz = zs[k] - z[k];
        const double ex = x[k + 1] - x[k], ez = z[k + 1] - z[k];
        const double nx = xn[k] - x[k], nz = zn[k] - z[k];
        const double wx = x[k - 1] - x[k], wz = z[k - 1] - z[k];
        const double vx = 0.25 * ((sy * ez - sz * level) + (level * nz - ez * ny) +
                                  (ny * wz - nz * level) + (level * sz - wz * sy));
        const double vy = 0.25 * ((sz * ex - sx * ez) + (ez * nx - ex * nz) +
                                  (nz * wx - nx * wz) + (wz * sx - wx * sz));
        const double vz = 0.25 * ((sx * level - sy * ex) + (ex * ny - level * nx) +
                                  (nx * level - ny * wx) + (wx * sy - level * sx));
        const double l = std::sqrt(vx * vx + vy * vy + vz * vz);
        const double by = l != 0.0 ? l : 1.0;
        normalX[k] = vx / by;
        normalY[k] = vy / by;
        normalZ[k] = vz / by;
    }
}

ALSO_WIDE
void rowOnScreen(const double *x, double y, const double *z, int count,
                 const C4Matrix &projection, std::int16_t offScreen,
                 std::int16_t *__restrict columns, std::int16_t *__restrict rows)
{
    const auto &m = projection.m;
    const double limit = Transformation::ScreenLimit;
    for (int k = 0; k < count; ++k) {
        const double w = x[k] * m[0][3] + y * m[1][3] + z[k] * m[2][3] + m[3][3];
        const double sx = (x[k] * m[0][0] + y * m[1][0] + z[k] * m[2][0] + m[3][0]) / w;
        const double sy = -(x[k] * m[0][1] + y * m[1][1] + z[k] * m[2][1] + m[3][1]) / w;
        const bool on =
            (w > 0.0) & (sx >= -limit) & (sx <= limit) & (sy >= -limit) & (sy <= limit);
        columns[k] =
            static_cast<std::int16_t>(static_cast<int>(on ? sx : double(offScreen)));
        rows[k] = static_cast<std::int16_t>(static_cast<int>(on ? sy : 0.0));
    }
}

ALSO_WIDE
void rowFacing(const RowCells &cells, int count, std::uint8_t *__restrict facing)
{
    const auto [x, zs, zn, ys, yn, middle0, middle1, observer] = cells;
    const double middleY0 = (ys + yn + yn) / 3 - observer.y;
    const double middleY1 = (ys + yn + ys) / 3 - observer.y;
    const double middleW = 1.0 - observer.w;
    const double rise = yn - ys;
    const double level = 0.0; // y along a row, x along a column
    for (int k = 0; k < count; ++k) {
        const double width = x[k + 1] - x[k];
        const double za = zn[k] - zs[k];
        const double zb = zn[k + 1] - zs[k];
        const double zc = zs[k + 1] - zs[k];
        // South-west, north-west and north-east corner.
        const double middleZ0 = (zs[k] + zn[k] + zn[k + 1]) / 3 - observer.z;
        const double x0 = rise * zb - za * rise;
        const double y0 = za * width - level * zb;
        const double z0 = level * rise - rise * width;
        const double facing0 = middle0[k] * x0 + middleY0 * y0 + middleZ0 * z0 + middleW;
        // South-west, north-east and south-east corner.
        const double middleZ1 = (zs[k] + zn[k + 1] + zs[k + 1]) / 3 - observer.z;
        const double x1 = rise * zc - zb * level;
        const double y1 = zb * width - width * zc;
        const double z1 = width * level - rise * width;
        const double facing1 = middle1[k] * x1 + middleY1 * y1 + middleZ1 * z1 + middleW;
        facing[k] =
            static_cast<std::uint8_t>(int(facing0 > 0.0) | int(facing1 > 0.0) << 1);
    }
}

ALSO_WIDE
void rowBounds(const std::int16_t *south, const std::int16_t *north, int count,
               std::int16_t *__restrict least, std::int16_t *__restrict greatest)
{
    for (int k = 0; k < count; ++k) {
        least[k] =
            std::min(std::min(south[k], south[k + 1]), std::min(north[k], north[k + 1]));
        greatest[k] =
            std::max(std::max(south[k], south[k + 1]), std::max(north[k], north[k + 1]));
    }
}
