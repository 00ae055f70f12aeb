#pragma once

#include <QSize>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

/// Which pixels of a picture have got their last colour, where triangles come near ones
/// first: a bit a pixel.
///
/// Threads may take pixels side by side, each in rows of its own.
class CoveredPixels {
public:
    /// None is covered.
    void begin(QSize picture)
    {
        constexpr int WordsAtATime = 8; // rows apart in the cache
        m_words = (picture.width() + 64 * WordsAtATime - 1) / (64 * WordsAtATime) *
                  WordsAtATime;
        m_bits.assign(std::size_t(m_words) * std::size_t(picture.height()), 0);
    }

    /// Whether all pixels of a part of a row are covered, or the part is longer than is
    /// looked at. Columns and row are in the picture, `last` not before `first`.
    [[nodiscard]] bool surelyCovers(int row, int first, int last) const
    {
        const int word = first >> 6;
        const std::uint64_t *const p = wordsOf(row) + word;
        if (word == last >> 6)
            return (bitsOf(first & 63, last & 63) & ~p[0]) == 0;
        if (word + 1 != last >> 6)
            return false;
        return (bitsOf(first & 63, 63) & ~p[0]) == 0 &&
               (bitsOf(0, last & 63) & ~p[1]) == 0;
    }

    // Columns stand in groups, whose bits are taken at once.
    static bool inOneGroup(int first, int last) { return first >> 6 == last >> 6; }
    /// The first column of a column's group; its bit is bit 0.
    static int groupOf(int column) { return column & ~63; }
    static std::uint64_t bitOf(int column) { return std::uint64_t(1) << (column & 63); }
    /// From the lowest to the highest of these bits, of which there is one.
    static std::uint64_t between(std::uint64_t bits)
    {
        return (std::bit_floor(bits) << 1) - (bits & (~bits + 1));
    }
    /// Covers these pixels of the group that the column belongs to; those of them that
    /// were not covered.
    std::uint64_t take(int row, int column, std::uint64_t bits)
    {
        std::uint64_t &word = wordsOf(row)[column >> 6];
        const std::uint64_t free = bits & ~word;
        word |= bits;
        return free;
    }

    /// Covers a part of a row: taken(column, bits) for those of its pixels that were not
    /// covered, bit 0 at that column, from left to right. None if `last` is before
    /// `first`.
    template <typename Taken> void take(int row, int first, int last, const Taken &taken)
    {
        for (int from = first; from <= last; from = (from | 63) + 1) {
            const int to = std::min(last, from | 63);
            const std::uint64_t free = take(row, from, bitsOf(from & 63, to & 63));
            if (free != 0)
                taken(groupOf(from), free);
        }
    }

private:
    // From the first to the last of them, 0 to 63.
    static std::uint64_t bitsOf(int first, int last)
    {
        return (~std::uint64_t(0) >> (63 - (last - first))) << first;
    }
    [[nodiscard]] const std::uint64_t *wordsOf(int row) const
    {
        return m_bits.data() + std::size_t(row) * std::size_t(m_words);
    }
    [[nodiscard]] std::uint64_t *wordsOf(int row)
    {
        return m_bits.data() + std::size_t(row) * std::size_t(m_words);
    }

    int m_words = 0; // a row
    std::vector<std::uint64_t> m_bits;
};
