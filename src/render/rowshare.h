#pragma once

#include <algorithm>

/// The rows of a picture that one of several threads paints: strips of some rows, dealt
/// out to the threads in turn.
struct RowShare {
    int index = 0;
    int count = 1;

    [[nodiscard]] bool owns(int row) const
    {
        return count == 1 || stripOf(row) % count == index;
    }

    static int stripOf(int row) { return row >> StripBits; }
    static constexpr int StripBits = 4;
};

/// The rows from first to last; none at first.
struct RowRange {
    int first = 0;
    int last = -1;

    [[nodiscard]] bool owns(int row) const { return row >= first && row <= last; }
    [[nodiscard]] int count() const { return last - first + 1; }
    /// Makes it span another range as well.
    void unite(RowRange other)
    {
        if (other.count() <= 0)
            return;
        const bool none = count() <= 0;
        first = none ? other.first : std::min(first, other.first);
        last = none ? other.last : std::max(last, other.last);
    }
};
