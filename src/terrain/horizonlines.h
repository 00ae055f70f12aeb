#pragma once

#include "terrain/cellstrips.h"

#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Parallel lines down or up a grid of heights, one for each column that they cross, and
/// how high the ground stands along them.
///
/// Line k runs through (k + slant * y, y) for all rows y. It sees heights between the
/// columns, so that cells between two lines have a horizon between those of the two.
/// Lines are followed many at once, row by row: their heights in a row are neighbours.
class HorizonLines {
public:
    static constexpr int LinesOfBlock = 128;

    /// `slant` in columns a row, -1 to 1; `step` metres from one row to the next along a
    /// line; the horizon is that toward higher rows, or toward lower ones. The heights
    /// are borrowed and have no voids.
    HorizonLines(const CellStrips &heights, double slant, double step, bool towardHigher);

    /// Blocks of neighbouring lines, which together go over each cell once.
    [[nodiscard]] int blocks() const
    {
        return (m_count + LinesOfBlock - 1) / LinesOfBlock;
    }

    /// One block on its way along its lines.
    class Walk;

private:
    // Columns as numbers of 32 bits before and 32 behind the point, which are exact.
    [[nodiscard]] qint64 columnOf(int k, int y) const
    {
        return qint64(k) * (qint64(1) << 32) + m_slant * y;
    }
    [[nodiscard]] std::pair<int, int> rowsOf(int first, int last) const;

    const CellStrips &m_heights;
    qint64 m_slant;
    bool m_towardHigher;
    int m_first = 0; // line that cells lie on or behind
    int m_count = 0;
    std::vector<float> m_perSteps; // 1 / the metres of so many steps
};

class HorizonLines::Walk {
public:
    Walk(const HorizonLines &lines, int block);

    /// Goes on to the next row in which cells lie on the lines or between them.
    [[nodiscard]] bool next();

    // Those cells: so many from `column()` on.
    [[nodiscard]] int row() const { return m_row; }
    [[nodiscard]] int column() const { return m_column; }
    [[nodiscard]] int count() const { return m_cells; }
    /// Tangents of the height of their horizon above the horizontal, far below where
    /// there is nothing.
    [[nodiscard]] const float *horizon() const { return m_horizon.data(); }

private:
    // Ground that is seen from somewhere further on.
    struct Point {
        float height;
        float horizon; // of the point itself
        int step;
    };
    static constexpr int Lines = LinesOfBlock + 1; // the last is the next block's first

    void readHeights(int column, float share);
    void followLines(int from, int to);
    void mixCells(int column, float share);

    const HorizonLines &m_lines;
    int m_firstLine;
    int m_step = 0; // so many rows have been looked at
    int m_steps = 0;
    int m_firstRow = 0; // of all, the lowest number
    int m_row = 0;
    int m_column = 0;
    int m_cells = 0;
    // A hull for each line; those of neighbours stand beside each other, since they are
    // about as long. The point of the last row is not among them yet.
    std::unique_ptr<Point[]> m_points;
    std::array<Point *, Lines> m_nearest{};
    std::array<float, Lines + 1> m_ground{}; // cells to the west and east of the lines
    std::array<float, Lines> m_height{};
    std::array<float, Lines> m_last{}; // heights of the row before
    std::array<float, Lines> m_line{}; // their horizons
    std::array<float, LinesOfBlock> m_horizon{};
};
