#pragma once

// Established names. The correction of images makes a search and does not use it yet:
// only tests look for a minimum, of functions of the live points of the correction.

/// Looks for the least value of a function of two arguments.
class Optimization {
public:
    /// A grid search with shrinking steps from x0 to x1 and y0 to y1. Gives the
    /// place in x and y; false if nowhere a value was found.
    [[nodiscard]] bool findMinimum(double (*f)(double, double), double &x, double &y,
                                   double x0, double x1, double y0, double y1);

private:
    // Limits and steps of a search.
    struct Grid {
        double x0, x1, dx;
        double y0, y1, dy;
    };

    // All points of a grid, row by row; true if no value can be less.
    bool tryGrid(const Grid &grid, double &x, double &y);
    // One trial at (u, v); true if no value can be less.
    bool tryAt(double u, double v, double &x, double &y);

    double (*m_function)(double, double) = nullptr;
    double m_best = 0.0;
    bool m_found = false;
};

/// How far the distances from (x, y) to the corrected points differ from those
/// of the pixel in hand to the distorted points.
[[nodiscard]] double distanceFunction1(double x, double y);
/// The same for the angles under which the points are seen.
[[nodiscard]] double angularFunction1(double x, double y);
