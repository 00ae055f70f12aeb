#pragma once

#include "importers/delaunay.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

/// Triangulations as tests ask for them.

template <int D> using Cloud = std::vector<std::array<double, D>>;

template <int D> struct Triangulation {
    int code = 0;
    std::vector<std::array<std::int32_t, D + 1>> triangles;
    std::int32_t maxSimplices = 0, maxUsed = 0;
    Cloud<D> perturbed;
    QString notice;
};

/// The state in which the C library's generator starts.
inline void restartGenerator() { std::srand(1); }

template <int D> Triangulation<D> triangulate(const Cloud<D> &cloud)
{
    const auto count = std::int32_t(cloud.size());
    CDoubleMatrix points;
    points.Allocate(count + D + 1, D);
    for (std::int32_t i = 0; i < count; ++i)
        std::copy_n(cloud[i].data(), D, points.rows[i]);
    Triangulation<D> result;
    NoProgress unwatched;
    const auto made = Delaunay(points, count, D, unwatched);
    if (made) {
        result.maxSimplices = made->maxSimplices;
        result.maxUsed = made->maxUsed;
    } else {
        result.code = made.error().code;
        result.notice = made.error().text;
    }
    for (std::int32_t t = 0; made && t < made->count; ++t) {
        result.triangles.emplace_back();
        std::copy_n(made->corners.rows[t], D + 1, result.triangles.back().data());
    }
    result.perturbed.resize(count + D + 1);
    for (std::int32_t i = 0; i < count + D + 1; ++i)
        std::copy_n(points.rows[i], D, result.perturbed[i].data());
    return result;
}
