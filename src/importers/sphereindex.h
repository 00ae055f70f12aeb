#pragma once

#include "importers/matrices.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <vector>

/// Finds, among many spheres, those that can hold a point.
///
/// A sphere stands in one cell, that of its centre, of a grid whose cells are at
/// least as wide as the sphere:
///
///        |       |   .---|.      |
///     ---+-------+--(--x-+-)-----+---     the point's sphere centres lie within
///        |     p |   `---|'      |        half a cell of it, hence in two cells
///        |       |       |       |        per axis
///
/// There is one grid for each power of two. The cells of all grids share one hash
/// table, whose chains may mix cells: that costs a test and changes no result,
/// since every candidate is tested exactly. Spheres too wide for a grid, or whose
/// numbers are not finite, stand in a plain list that every search walks.
///
/// A sphere is a row of D centre coordinates and the squared radius, in a table
/// that the user keeps; a slot is its row.
template <int D> class SphereIndex {
public:
    /// Memory for slots 0 to capacity - 1 within a world of this extent; false if
    /// there is none.
    [[nodiscard]] bool prepare(std::int32_t capacity, const double *minimum,
                               const double *extent, const double *spheres);
    void insert(std::int32_t slot);
    void remove(std::int32_t slot);

    /// Collects in ascending order the slots whose sphere holds the point.
    void find(const double *point, std::vector<std::int32_t> &found);

    /// The one test: what is no number counts as inside, as does the rim.
    [[nodiscard]] static bool holds(const double *sphere, const double *point)
    {
        double r = sphere[D];
        for (int c = 0; c < D; ++c) {
            const double d = point[c] - sphere[c];
            r -= d * d;
            if (r < 0.0)
                return false;
        }
        return true;
    }

private:
    static constexpr int Levels = 40;
    static constexpr std::uint8_t WideLevel = 255;
    static constexpr std::int32_t None = -1;

    struct Wide {
        double sphere[D + 1];
        std::int32_t slot;
    };

    [[nodiscard]] int levelOf(const double *sphere) const;
    [[nodiscard]] std::int64_t cellOf(double v, int axis, double perCell) const;
    [[nodiscard]] std::uint32_t bucketOf(const std::int64_t *cell, int level) const;
    void collectBuckets(int level, const double *point);

    const double *m_spheres = nullptr;
    std::array<double, D> m_minimum{};
    double m_slack = 0.0;     // what the rounding of coordinates can amount to
    int m_lowestExponent = 0; // cells of level 0 are 2^this wide
    int m_shift = 0;          // hash to bucket
    std::array<double, Levels> m_perCell{}; // 1 / width
    std::array<double, Levels> m_half{};    // width / 2
    std::array<std::int32_t, Levels> m_count{};
    CIntVector m_head;
    CIntVector m_next;
    CIntVector m_previous; // of a first in its chain: ~bucket; of a wide one: place
    std::vector<std::uint8_t> m_level;
    std::vector<Wide> m_wide;
    std::vector<std::uint32_t> m_buckets; // scratch of a search
    std::vector<std::int32_t> m_chains;
};

template <int D>
bool SphereIndex<D>::prepare(std::int32_t capacity, const double *minimum,
                             const double *extent, const double *spheres)
{
    int bits = 10;
    while (bits < 30 && (std::int64_t(1) << bits) < capacity)
        ++bits;
    if (!m_head.Allocate(1 << bits) || !m_next.Allocate(capacity) ||
        !m_previous.Allocate(capacity))
        return false;
    std::fill_n(m_head.data, m_head.size, None);
    m_level.resize(std::size_t(capacity));
    m_shift = 64 - bits;
    m_spheres = spheres;

    double widest = 0.0;
    double farthest = 0.0;
    for (int c = 0; c < D; ++c) {
        m_minimum[c] = minimum[c];
        widest = std::max(widest, extent[c]);
        farthest = std::max(
            {farthest, std::fabs(minimum[c]), std::fabs(minimum[c] + extent[c])});
    }
    m_slack = farthest * 16 * DBL_EPSILON;
    int exponent = 0;
    if (std::isfinite(widest))
        std::frexp(widest / 4, &exponent); // the top grid has a few cells
    m_lowestExponent = exponent - Levels;
    for (int level = 0; level < Levels; ++level) {
        m_perCell[level] = std::ldexp(1.0, -(m_lowestExponent + level));
        m_half[level] = std::ldexp(0.5, m_lowestExponent + level);
    }
    return true;
}

template <int D> int SphereIndex<D>::levelOf(const double *sphere) const
{
    const double width =
        2.0 * std::sqrt(sphere[D]) * (1.0 + 1e-9) + 4.0 * m_slack + DBL_MIN;
    bool finite = std::isfinite(width);
    for (int c = 0; c < D; ++c)
        finite = finite && std::isfinite(sphere[c]);
    if (!finite)
        return WideLevel;
    int exponent = 0;
    std::frexp(width, &exponent); // width < 2^exponent
    const int level = std::max(exponent - m_lowestExponent, 0);
    return level < Levels ? level : WideLevel;
}

template <int D>
std::int64_t SphereIndex<D>::cellOf(double v, int axis, double perCell) const
{
    constexpr double Far = 4e18; // fits, and rises with v like all else here
    const double cell = std::floor((v - m_minimum[axis]) * perCell);
    return static_cast<std::int64_t>(std::clamp(cell, -Far, Far));
}

template <int D>
std::uint32_t SphereIndex<D>::bucketOf(const std::int64_t *cell, int level) const
{
    std::uint64_t hash = std::uint64_t(level) + 1;
    for (int c = 0; c < D; ++c)
        hash = (hash ^ std::uint64_t(cell[c])) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 29;
    hash *= 0xBF58476D1CE4E5B9u;
    return static_cast<std::uint32_t>(hash >> m_shift);
}

template <int D> void SphereIndex<D>::insert(std::int32_t slot)
{
    const double *const sphere = m_spheres + std::ptrdiff_t(slot) * (D + 1);
    const int level = levelOf(sphere);
    m_level[std::size_t(slot)] = static_cast<std::uint8_t>(level);
    if (level == WideLevel) {
        Wide wide;
        std::copy_n(sphere, D + 1, wide.sphere);
        wide.slot = slot;
        m_previous.data[slot] = static_cast<std::int32_t>(m_wide.size());
        m_wide.push_back(wide);
        return;
    }
    std::int64_t cell[D];
    for (int c = 0; c < D; ++c)
        cell[c] = cellOf(sphere[c], c, m_perCell[level]);
    const std::uint32_t bucket = bucketOf(cell, level);
    const std::int32_t first = m_head.data[bucket];
    m_next.data[slot] = first;
    m_previous.data[slot] = ~static_cast<std::int32_t>(bucket);
    if (first != None)
        m_previous.data[first] = slot;
    m_head.data[bucket] = slot;
    ++m_count[level];
}

template <int D> void SphereIndex<D>::remove(std::int32_t slot)
{
    const int level = m_level[std::size_t(slot)];
    const std::int32_t previous = m_previous.data[slot];
    if (level == WideLevel) {
        m_wide[std::size_t(previous)] = m_wide.back();
        m_previous.data[m_wide.back().slot] = previous;
        m_wide.pop_back();
        return;
    }
    const std::int32_t next = m_next.data[slot];
    (previous < 0 ? m_head.data[~previous] : m_next.data[previous]) = next;
    if (next != None)
        m_previous.data[next] = previous;
    --m_count[level];
}

// The chains of the cells within half a cell of the point.
template <int D> void SphereIndex<D>::collectBuckets(int level, const double *point)
{
    std::int64_t first[D], last[D], cell[D];
    for (int c = 0; c < D; ++c) {
        first[c] = cellOf(point[c] - m_half[level], c, m_perCell[level]);
        last[c] = cellOf(point[c] + m_half[level], c, m_perCell[level]);
        cell[c] = first[c];
    }
    for (;;) {
        const std::uint32_t bucket = bucketOf(cell, level);
        __builtin_prefetch(m_head.data + bucket);
        m_buckets.push_back(bucket);
        int c = 0;
        while (c < D && cell[c] == last[c]) {
            cell[c] = first[c];
            ++c;
        }
        if (c == D)
            return;
        ++cell[c];
    }
}

template <int D>
void SphereIndex<D>::find(const double *point, std::vector<std::int32_t> &found)
{
    // In large clouds each step waits for memory, so each is taken for all cells
    // before the next.
    m_buckets.clear();
    for (int level = 0; level < Levels; ++level)
        if (m_count[level] > 0)
            collectBuckets(level, point);
    m_chains.clear();
    for (const std::uint32_t bucket : m_buckets) {
        const std::int32_t slot = m_head.data[bucket];
        if (slot == None)
            continue;
        __builtin_prefetch(m_spheres + std::ptrdiff_t(slot) * (D + 1));
        __builtin_prefetch(m_next.data + slot);
        m_chains.push_back(slot);
    }

    found.clear();
    for (const Wide &wide : m_wide)
        if (holds(wide.sphere, point))
            found.push_back(wide.slot);
    // All chains go on by one slot in a round.
    while (!m_chains.empty()) {
        std::size_t left = 0;
        for (const std::int32_t slot : m_chains) {
            if (holds(m_spheres + std::ptrdiff_t(slot) * (D + 1), point))
                found.push_back(slot);
            const std::int32_t next = m_next.data[slot];
            if (next == None)
                continue;
            __builtin_prefetch(m_spheres + std::ptrdiff_t(next) * (D + 1));
            __builtin_prefetch(m_next.data + next);
            m_chains[left++] = next;
        }
        m_chains.resize(left);
    }
    // Two cells of a search may share a chain.
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
}
