#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

// The rows of a triangle on the screen, the same for whoever paints or colours them.
//
// A triangle is filled scanline by scanline between two edges: upward from its lowest
// corner to the row of the middle one, then downward from the highest corner to the same
// row, which is thus filled twice.

/// A corner of a triangle on the screen, in whole pixels; rows count downward.
struct ScreenCorner {
    int x = 0, row = 0;
};

/// A part of the screen, ends included.
struct ScreenBox {
    int left, right, top, bottom;
};

/// What three corners lie in.
[[nodiscard]] inline ScreenBox boxAround(const ScreenCorner &a, const ScreenCorner &b,
                                         const ScreenCorner &c)
{
    return {std::min(std::min(a.x, b.x), c.x), std::max(std::max(a.x, b.x), c.x),
            std::min(std::min(a.row, b.row), c.row),
            std::max(std::max(a.row, b.row), c.row)};
}

/// Which corner is the highest in the picture, which comes next, and which is the lowest.
using CornerOrder = std::array<std::uint8_t, 3>;

/// The order of corners by their rows. Which of two on one row comes first is part of the
/// pictures' bytes; no branch is taken, for none could be foreseen.
[[nodiscard]] inline CornerOrder orderByRow(const ScreenCorner &a, const ScreenCorner &b,
                                            const ScreenCorner &c)
{
    constexpr auto keyOf = [](int p, int q, int r) {
        return int(q < p) | int(r < p) << 1 | int(r < q) << 2 | int(p < q) << 3;
    };
    static constexpr std::array<CornerOrder, 16> Orders = [keyOf] {
        std::array<CornerOrder, 16> orders{};
        for (int places = 0; places < 27; ++places) { // all ways in which rows compare
            const int rows[3] = {places / 9, places / 3 % 3, places % 3};
            CornerOrder order = {0, 1, 2};
            for (const auto &[i, k] : {std::pair{0, 1}, {0, 2}, {1, 2}})
                if (rows[order[k]] < rows[order[i]])
                    std::swap(order[i], order[k]);
            orders[keyOf(rows[0], rows[1], rows[2])] = order;
        }
        return orders;
    }();
    return Orders[keyOf(a.row, b.row, c.row)];
}

/// Three corners, sorted: s[0] is the highest in the picture, s[2] the lowest.
struct SortedCorners {
    SortedCorners(const ScreenCorner &a, const ScreenCorner &b, const ScreenCorner &c)
    {
        const ScreenCorner corners[3] = {a, b, c};
        const CornerOrder order = orderByRow(a, b, c);
        for (int k = 0; k < 3; ++k)
            s[k] = corners[order[k]];
    }

    ScreenCorner s[3];
};

/// Left and right end of the row in hand, moved along the two edges of a part. Slopes are
/// in columns a row. A part without height paints one pixel, its corner: the other part
/// fills that row where it has height.
struct TrigonEdges {
    explicit TrigonEdges(int start) : left(start), right(start) {}
    TrigonEdges(int start, double a, double b)
        : left(start), right(start), leftStep(std::min(a, b)), rightStep(std::max(a, b))
    {
    }
    void step()
    {
        left += leftStep;
        right += rightStep;
    }
    /// Columns of the row, of those from 0 to `most`.
    [[nodiscard]] int first() const { return std::max(static_cast<int>(left), 0); }
    [[nodiscard]] int last(int most) const
    {
        return std::min(static_cast<int>(right), most);
    }

    double left, right;
    double leftStep = 0.0, rightStep = 0.0;
};

/// The lower part of a triangle with sorted corners: fillRow(row, edges) for its rows
/// from 0 to yMax that `rows` owns. The others are passed over, yet the edges advance
/// step by step through them: a product would round differently, and pictures stay the
/// same to the bit.
template <typename Rows, typename FillRow>
void fillUpward(const ScreenCorner (&s)[3], int yMax, Rows rows, const FillRow &fillRow)
{
    const int first = std::max(s[1].row, 0);
    const bool oneRow = s[2].row == s[1].row;
    TrigonEdges edges =
        oneRow ? TrigonEdges(s[2].x)
               : TrigonEdges(s[2].x, double(s[1].x - s[2].x) / (s[2].row - s[1].row),
                             double(s[0].x - s[2].x) / (s[2].row - s[0].row));
    for (int row = s[2].row; row >= first; --row, edges.step())
        if (row <= yMax && rows.owns(row))
            fillRow(row, edges);
}

/// The upper part, in the same way.
template <typename Rows, typename FillRow>
void fillDownward(const ScreenCorner (&s)[3], int yMax, Rows rows, const FillRow &fillRow)
{
    const int last = std::min(s[1].row, yMax);
    const bool oneRow = s[0].row == s[1].row;
    TrigonEdges edges =
        oneRow ? TrigonEdges(s[0].x)
               : TrigonEdges(s[0].x, double(s[0].x - s[1].x) / (s[0].row - s[1].row),
                             double(s[0].x - s[2].x) / (s[0].row - s[2].row));
    for (int row = s[0].row; row <= last; ++row, edges.step())
        if (row >= 0 && rows.owns(row))
            fillRow(row, edges);
}

/// Whether a triangle with sorted corners fills one row or two. Most of a mesh do.
[[nodiscard]] inline bool isLow(const ScreenCorner (&s)[3])
{
    return s[2].row - s[0].row <= 1;
}

/// All of a low triangle: fillSpan(row, from, to), ends in any order, rows in the picture
/// or not. With edges over one row at most there is nothing to round: a row reaches from
/// corner to corner. The spans are those of the upper part, then those of the lower one,
/// but for the ones that lie in spans before them and begin where those do.
template <typename FillSpan>
void fillLow(const ScreenCorner (&s)[3], const FillSpan &fillSpan)
{
    const bool flat = s[0].row == s[2].row;
    fillSpan(s[0].row, s[0].x, s[0].x);
    if (flat || s[1].row == s[0].row)
        fillSpan(s[2].row, s[2].x, s[2].x);
    if (flat) // of its row nothing but the first and the last corner
        return;
    if (s[1].row == s[0].row)
        fillSpan(s[0].row, s[0].x, s[1].x);
    else
        fillSpan(s[2].row, s[1].x, s[2].x);
}
