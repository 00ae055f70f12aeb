#pragma once

#include <QtGlobal>

#include <vector>

/// Samples a rational B-spline surface over open uniform knots.
///
/// The program uses it as a curve: order 4 over the net in the first direction,
/// one net point and one sample in the second.
class NURBS {
public:
    NURBS() = default;
    NURBS(const NURBS &) = delete;
    NURBS &operator=(const NURBS &) = delete;

    /// Takes npts * mpts triples (x, y, z) as the net, each of weight 1.
    void fill3D(int npts, int mpts, const double *points);
    /// Computes p1 * p2 samples for the orders k1 and k2; fill3D must have run.
    void rbspsurf(int k1, int k2, int npts, int mpts, int p1, int p2);
    /// Coordinate col (0, 1, 2) of a sample, row = 3 * sample; 0 before a result.
    [[nodiscard]] double getResultingSurface(int row, int col) const
    {
        return resultingSurface.empty() ? 0.0
                                        : resultingSurface[static_cast<std::size_t>(row) +
                                                           static_cast<std::size_t>(col)];
    }

    /// Writes the n + c knots for n net points and order c.
    static void knot(int n, int c, qint32 *x);
    /// Writes the npts basis values of order c at parameter t over the knots x.
    void basis(int c, double t, int npts, const qint32 *x, double *n);
    /// The denominator of the rational surface for a pair of basis tables.
    [[nodiscard]] double sumrbas(const double *b, const double *nbasis,
                                 const double *mbasis, int npts, int mpts) const;

private:
    std::vector<double> netPoints;        // x, y, z, weight a point
    std::vector<double> resultingSurface; // x, y, z a sample
    std::vector<double> work;             // of basis()
};
