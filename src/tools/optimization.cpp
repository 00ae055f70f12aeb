#include "tools/optimization.h"

#include "tools/rectify.h"

#include <cmath>

namespace {

// Keeps the last step of a grid within its limits, and ends the refinement.
constexpr double Slack = 1e-06;
constexpr double StartValue = 3.4028234663852886e+38;
constexpr double FullCircle = 6.283185307179586;

// A step of 0, or one that is lost beside a large value, would never end.
bool advance(double &value, double step)
{
    const double next = value + step;
    if (!(next > value))
        return false;
    value = next;
    return true;
}

double distance(double px, double py, double qx, double qy)
{
    return std::sqrt((px - qx) * (px - qx) + (py - qy) * (py - qy));
}

// The angle at (px, py) between (ax, ay) and (bx, by).
double angle(double px, double py, double ax, double ay, double bx, double by)
{
    const double lengths = distance(ax, ay, px, py) * distance(bx, by, px, py);
    if (lengths == 0.0)
        return 0.0;
    const double dot = (ax - px) * (bx - px) + (ay - py) * (by - py);
    // Rounding may lead a hair beyond 1, where acos has no value.
    return std::acos(std::fmax(-1.0, std::fmin(1.0, dot / lengths)));
}

} // namespace

bool Optimization::tryAt(double u, double v, double &x, double &y)
{
    const double w = m_function(u, v);
    if (!(w < m_best))
        return false;
    x = u;
    y = v;
    m_best = w;
    m_found = true;
    return w == 0.0;
}

bool Optimization::tryGrid(const Grid &grid, double &x, double &y)
{
    for (double v = grid.y0; v <= grid.y1 + Slack;) {
        for (double u = grid.x0; u <= grid.x1 + Slack;) {
            if (tryAt(u, v, x, y))
                return true;
            if (!advance(u, grid.dx))
                break;
        }
        if (!advance(v, grid.dy))
            break;
    }
    return false;
}

bool Optimization::findMinimum(double (*f)(double, double), double &x, double &y,
                               double x0, double x1, double y0, double y1)
{
    constexpr int MostRefinements = 40;
    m_function = f;
    m_best = StartValue;
    m_found = false;
    double dx = (x1 - x0) * 0.25;
    double dy = (y1 - y0) * 0.25;
    if (tryGrid({x0, x1, dx, y0, y1, dy}, x, y))
        return true;
    for (int i = 0; i < MostRefinements; ++i) {
        const double half = dx * 0.5;
        if (half < Slack || dy < Slack)
            return m_found;
        if (tryGrid({x - dx, x + dx, half, y - dy, y + dy, dy * 0.5}, x, y))
            return true;
        dx = half;
        dy *= 0.5;
    }
    return m_found;
}

double distanceFunction1(double x, double y)
{
    return std::abs(distance(x, y, Ax, Ay) - distance(Px_, Py_, Ax_, Ay_)) +
           std::abs(distance(x, y, Bx, By) - distance(Px_, Py_, Bx_, By_)) +
           std::abs(distance(x, y, Cx, Cy) - distance(Px_, Py_, Cx_, Cy_)) +
           std::abs(distance(x, y, Dx, Dy) - distance(Px_, Py_, Dx_, Dy_));
}

double angularFunction1(double x, double y)
{
    const double a1 = angle(x, y, Ax, Ay, Bx, By);
    const double a2 = angle(x, y, Bx, By, Cx, Cy);
    const double a3 = angle(x, y, Cx, Cy, Dx, Dy);
    const double b1 = angle(Px_, Py_, Ax_, Ay_, Bx_, By_);
    const double b2 = angle(Px_, Py_, Bx_, By_, Cx_, Cy_);
    const double b3 = angle(Px_, Py_, Cx_, Cy_, Dx_, Dy_);
    const double r = ((FullCircle - a1) - a2 - a3) - ((FullCircle - b1) - b2 - b3);
    return (a3 - b3) * (a3 - b3) + (a2 - b2) * (a2 - b2) + (a1 - b1) * (a1 - b1) + r * r;
}
