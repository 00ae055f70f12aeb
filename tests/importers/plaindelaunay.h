#pragma once

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

/// The triangulation by the plain walk over all active simplices for every point:
/// the judge of the quick one. Slots are numbered by the same stack. Gives the
/// return code.
template <int D> class PlainDelaunay {
public:
    using Simplex = std::array<std::int32_t, D + 1>;

    explicit PlainDelaunay(std::vector<std::array<double, D>> points)
        : m_points(std::move(points)), m_count(std::int32_t(m_points.size()))
    {
    }

    std::vector<Simplex> triangles;
    std::int32_t maxUsed = 0;

    int run()
    {
        constexpr int Factorial = D == 2 ? 2 : 6;
        const std::int32_t limit = (Factorial * 10000 + m_count) * Factorial;
        perturbAndEnclose();
        m_free.resize(limit);
        for (std::int32_t i = 0; i < limit; ++i)
            m_free[i] = i;
        m_simplices.assign(limit, {});
        m_spheres.assign(limit, {});
        for (int k = 0; k <= D; ++k)
            m_simplices[0][k] = m_count + k;
        m_spheres[0] = {};
        m_spheres[0][D] = FLT_MAX;
        std::int32_t active = 1;
        std::int32_t position = 1;
        for (std::int32_t i = 0; i < m_count; ++i) {
            std::vector<std::array<std::int32_t, D>> faces;
            std::int32_t removed = 0;
            for (std::int32_t j = 0, seen = 0; seen < active; ++j) {
                if (m_simplices[j][0] < 0)
                    continue;
                ++seen;
                if (!inside(j, i))
                    continue;
                m_free[--position] = j;
                for (int k = 0; k <= D; ++k)
                    if (!toggle(faces, m_simplices[j], k, 150 * Factorial))
                        return 2;
                m_simplices[j][0] = -1;
                ++removed;
            }
            for (const auto &face : faces) {
                maxUsed = std::max(maxUsed, position);
                const std::int32_t slot = m_free[position++];
                sphere(face, i, m_spheres[slot]);
                for (int k = 0; k < D; ++k)
                    m_simplices[slot][k] = face[k];
                m_simplices[slot][D] = i;
            }
            active += std::int32_t(faces.size()) - removed;
        }
        output(active);
        return 0;
    }

private:
    void perturbAndEnclose()
    {
        std::array<double, D> extent, lowest;
        extent.fill(-FLT_MAX);
        lowest.fill(FLT_MAX);
        for (const auto &p : m_points)
            for (int c = 0; c < D; ++c) {
                extent[c] = std::max(extent[c], p[c]);
                lowest[c] = std::min(lowest[c], p[c]);
            }
        double jitter = 0;
        for (int c = 0; c < D; ++c) {
            extent[c] -= lowest[c];
            jitter = std::max(jitter, extent[c] * 0.00001);
        }
        for (auto &p : m_points)
            for (double &v : p)
                v = ((std::rand() / -2147483647.0) + 0.5) * jitter + v;
        for (int k = 0; k <= D; ++k) {
            std::array<double, D> corner;
            for (int j = 0; j < D; ++j)
                corner[j] = (j == k ? 10.0 * (3 * D - 1) : -10.0) * extent[j] + lowest[j];
            m_points.push_back(corner);
        }
    }

    bool inside(std::int32_t j, std::int32_t i) const
    {
        double r = m_spheres[j][D];
        for (int c = 0; c < D; ++c) {
            const double d = m_points[i][c] - m_spheres[j][c];
            r -= d * d;
            if (r < 0)
                return false;
        }
        return true;
    }

    static bool toggle(std::vector<std::array<std::int32_t, D>> &faces,
                       const Simplex &simplex, int omitted, std::size_t limit)
    {
        std::array<std::int32_t, D> face;
        for (int k = 0, n = 0; k <= D; ++k)
            if (k != omitted)
                face[n++] = simplex[k];
        for (auto &f : faces)
            if (f == face && faces.size() >= D + 1) {
                f = faces.back();
                faces.pop_back();
                return true;
            }
        faces.push_back(face);
        return faces.size() <= limit + 1;
    }

    void sphere(const std::array<std::int32_t, D> &face, std::int32_t i,
                std::array<double, D + 1> &out) const
    {
        const auto &q = m_points[i];
        double s[D][D + 1];
        for (int a = 0; a < D; ++a) {
            const auto &p = m_points[face[a]];
            s[a][D] = 0;
            for (int e = 0; e < D; ++e) {
                s[a][e] = p[e] - q[e];
                s[a][D] += (p[e] + q[e]) * s[a][e] * 0.5;
            }
        }
        if constexpr (D == 2) {
            double det = s[0][0] * s[1][1] - s[1][0] * s[0][1];
            if (det == 0)
                det = 0.000000000001;
            out[0] = (s[1][1] * s[0][2] - s[0][1] * s[1][2]) / det;
            out[1] = (s[0][0] * s[1][2] - s[1][0] * s[0][2]) / det;
        } else {
            const double det = determinant3(s, 0, 1, 2);
            out[0] = determinant3(s, 3, 1, 2) / det;
            out[1] = determinant3(s, 0, 3, 2) / det;
            out[2] = determinant3(s, 0, 1, 3) / det;
        }
        out[D] = 0;
        for (int e = 0; e < D; ++e)
            out[D] += (q[e] - out[e]) * (q[e] - out[e]);
    }

    // Of the columns named.
    static double determinant3(const double (&s)[D][D + 1], int x, int y, int z)
    {
        return s[0][x] * (s[1][y] * s[2][z] - s[1][z] * s[2][y]) -
               s[0][y] * (s[1][x] * s[2][z] - s[1][z] * s[2][x]) +
               s[0][z] * (s[1][x] * s[2][y] - s[1][y] * s[2][x]);
    }

    void output(std::int32_t active)
    {
        for (std::int32_t j = 0, seen = 0; seen < active; ++j) {
            Simplex simplex = m_simplices[j];
            if (simplex[0] < 0)
                continue;
            ++seen;
            if (simplex[0] >= m_count)
                continue;
            double s[D][D + 1];
            for (int a = 0; a < D; ++a)
                for (int e = 0; e < D; ++e)
                    s[a][e] = m_points[simplex[a]][e] - m_points[simplex[D]][e];
            double det;
            if constexpr (D == 2)
                det = s[0][0] * s[1][1] - s[0][1] * s[1][0];
            else
                det = determinant3(s, 0, 1, 2);
            if (std::fabs(det) <= 0.00001)
                continue;
            if (det < 0)
                std::swap(simplex[D - 1], simplex[D]);
            triangles.push_back(simplex);
        }
    }

    std::vector<std::array<double, D>> m_points;
    const std::int32_t m_count;
    std::vector<std::int32_t> m_free;
    std::vector<Simplex> m_simplices;
    std::vector<std::array<double, D + 1>> m_spheres;
};
