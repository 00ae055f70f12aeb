#pragma once

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

/// The rows from first to last.
struct RowRange {
    int first = 0;
    int last = 0;

    [[nodiscard]] bool owns(int row) const { return row >= first && row <= last; }
};
