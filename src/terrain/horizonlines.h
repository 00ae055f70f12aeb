#pragma once

#include "terrain/heights.h"

#include <utility>
#include <vector>

/// Parallel lines across a grid of heights, one for each row that they cross, toward one
/// side of the grid; and how high the ground stands along them.
///
/// Line k runs through (x, k + slant * x) for all columns x. It sees heights between the
/// rows, so that cells between two lines have a horizon between those of the two.
class HorizonLines {
public:
    /// `slant` in rows a column, -1 to 1; `step` metres from one column to the next along
    /// a line; the horizon is that toward higher columns, or toward lower ones. The
    /// heights are borrowed and have no voids.
    HorizonLines(const Heights &heights, double slant, double step, bool towardHigher);

    /// The lines that cells lie on or behind: from `first`, `count` of them.
    [[nodiscard]] int first() const { return m_first; }
    [[nodiscard]] int count() const { return m_count; }

    /// What one thread works with.
    struct Work {
        explicit Work(const Heights &heights);
        std::vector<float> height;  // along a line
        std::vector<float> line;    // horizon of line k
        std::vector<float> next;    // of line k + 1
        std::vector<float> horizon; // of the cells between
        std::vector<int> row;       // of the cells between; -1: none in that column
        int from = 0;               // columns in which there may be cells between
        int to = 0;
        std::vector<float> hullHeight;
        std::vector<int> hullColumn;
    };

    /// The horizon along line k: tangents of its height above the horizontal, far below
    /// where there is nothing.
    void horizonOf(int k, std::vector<float> &horizon, Work &work) const;
    /// From `work.line` and `work.next`, those of k and k + 1, the horizons of the cells
    /// that lie on line k or between the two: one at most in each column.
    void between(int k, Work &work) const;

private:
    // Rows as numbers of 32 bits before and 32 behind the point, which are exact.
    [[nodiscard]] qint64 rowOf(int k, int x) const
    {
        return qint64(k) * (qint64(1) << 32) + m_slant * x;
    }
    [[nodiscard]] std::pair<int, int> columnsOf(int k) const;
    void readHeights(int k, Work &work) const;

    const Heights &m_heights;
    qint64 m_slant;
    float m_perStep; // 1 / step
    bool m_towardHigher;
    int m_first = 0;
    int m_count = 0;
};
