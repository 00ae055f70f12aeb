#include "terrain/speckle.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace {

// A number between -1 and 1 that depends on a place alone.
float valueAt(int x, int y, unsigned int seed)
{
    std::uint32_t bits = static_cast<std::uint32_t>(x) * 0x9E3779B1u ^
                         (static_cast<std::uint32_t>(y) * 0x85EBCA77u + seed);
    bits = (bits ^ bits >> 15) * 0x2C1B3C6Du;
    bits = (bits ^ bits >> 12) * 0x297A2D39u;
    bits ^= bits >> 15;
    return static_cast<float>(static_cast<std::int32_t>(bits)) * (1.0f / 2147483648.0f);
}

float smooth(float t) { return t * t * (3.0f - 2.0f * t); }

} // namespace

SpeckleRows::SpeckleRows(int width) : m_width(width), m_lattice(std::size_t(width) + 2) {}

// Between the corners of the lattice the values run along smooth curves.
void SpeckleRows::add(int y, int size, float weight, unsigned int seed, float *values)
{
    const int row = y / size;
    const float down = smooth(float(y % size) / float(size));
    const int corners = m_width / size + 2;
    for (int i = 0; i < corners; ++i) {
        const float above = valueAt(i, row, seed);
        const float below = valueAt(i, row + 1, seed);
        m_lattice[std::size_t(i)] = weight * (above + down * (below - above));
    }
    std::array<float, 64> right{};
    for (int i = 0; i < size; ++i)
        right[std::size_t(i)] = smooth(float(i) / float(size));
    for (int first = 0, i = 0; first < m_width; first += size, ++i) {
        const float left = m_lattice[std::size_t(i)];
        const float difference = m_lattice[std::size_t(i) + 1] - left;
        const int count = std::min(size, m_width - first);
        for (int j = 0; j < count; ++j)
            values[first + j] += left + right[std::size_t(j)] * difference;
    }
}

void SpeckleRows::readPatches(int y, float *values)
{
    std::fill_n(values, m_width, 0.0f);
    add(y, 64, 0.6f, 11, values);
    add(y, 16, 0.4f, 12, values);
}

void SpeckleRows::readGrain(int y, float *values)
{
    std::fill_n(values, m_width, 0.0f);
    add(y, 4, 0.55f, 13, values);
    for (int x = 0; x < m_width; ++x)
        values[x] += 0.45f * valueAt(x, y, 14);
}
