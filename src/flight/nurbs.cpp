#include "flight/nurbs.h"

#include <algorithm>

namespace {

// The steps are added up, so the last sample may fall short of the end knot by
// rounding; what comes this close stands on it.
constexpr double EndSnap = 5e-6;

std::size_t sizeOf(int count) { return static_cast<std::size_t>(std::max(count, 0)); }

} // namespace

void NURBS::fill3D(int npts, int mpts, const double *points)
{
    const std::size_t count = sizeOf(npts) * sizeOf(mpts);
    netPoints.assign(count * 4, 0.0);
    for (std::size_t i = 0; i < count; ++i) {
        std::copy_n(points + 3 * i, 3, netPoints.begin() + static_cast<qptrdiff>(4 * i));
        netPoints[4 * i + 3] = 1.0;
    }
}

void NURBS::knot(int n, int c, qint32 *x)
{
    x[0] = 0;
    for (int i = 1; i < n + c; ++i)
        x[i] = x[i - 1] + (c <= i && i <= n ? 1 : 0);
}

void NURBS::basis(int c, double t, int npts, const qint32 *x, double *n)
{
    const int nplusc = npts + c;
    if (work.size() < sizeOf(nplusc))
        work.resize(sizeOf(nplusc));
    std::fill_n(work.begin(), nplusc, 0.0);

    // Only one span holds t, so at order k no more than k values differ from zero:
    // those that end there. The others are left out of the recursion.
    const int span = static_cast<int>(std::upper_bound(x, x + nplusc, t) - x) - 1;
    if (span >= 0 && span <= nplusc - 2) {
        const auto w = work.begin();
        w[span] = 1.0;
        for (int k = 2; k <= c; ++k) {
            const int last = std::min(span, nplusc - k - 1);
            for (int i = std::max(0, span - k + 1); i <= last; ++i) {
                const double d =
                    w[i] != 0.0 ? w[i] * (t - x[i]) / (x[i + k - 1] - x[i]) : 0.0;
                const double e = w[i + 1] != 0.0
                                     ? w[i + 1] * (x[i + k] - t) / (x[i + k] - x[i + 1])
                                     : 0.0;
                w[i] = d + e;
            }
        }
    }
    // The spans are half open, which would leave out the end of the curve.
    if (t == x[nplusc - 1])
        work[sizeOf(npts - 1)] = 1.0;
    std::copy_n(work.begin(), npts, n);
}

double NURBS::sumrbas(const double *b, const double *nbasis, const double *mbasis,
                      int npts, int mpts) const
{
    double sum = 0.0;
    for (int i = 0; i < npts; ++i) {
        if (nbasis[i] == 0.0)
            continue;
        for (int j = 0; j < mpts; ++j)
            if (mbasis[j] != 0.0)
                sum += mbasis[j] * (b[4 * (qptrdiff(i) * mpts + j) + 3] * nbasis[i]);
    }
    return sum;
}

void NURBS::rbspsurf(int k1, int k2, int npts, int mpts, int p1, int p2)
{
    std::vector<qint32> x(sizeOf(npts + k1));
    std::vector<qint32> y(sizeOf(mpts + k2));
    std::vector<double> nbasis(sizeOf(npts));
    std::vector<double> mbasis(sizeOf(mpts));
    resultingSurface.assign(sizeOf(p1) * sizeOf(p2) * 3, 0.0);
    knot(npts, k1, x.data());
    knot(mpts, k2, y.data());
    // One sample makes the step 0/0 or 1/0; it is then never used.
    const double stepu = x.back() / static_cast<double>(p1 - 1);
    const double stepw = y.back() / static_cast<double>(p2 - 1);

    const double *const net = netPoints.data();
    double *sample = resultingSurface.data();
    double u = 0.0;
    for (int a = 0; a < p1; ++a) {
        if (x.back() - u < EndSnap)
            u = x.back();
        basis(k1, u, npts, x.data(), nbasis.data());
        double w = 0.0;
        for (int b = 0; b < p2; ++b, sample += 3) {
            if (y.back() - w < EndSnap)
                w = y.back();
            basis(k2, w, mpts, y.data(), mbasis.data());
            const double sum = sumrbas(net, nbasis.data(), mbasis.data(), npts, mpts);
            for (int i = 0; i < npts; ++i) {
                if (nbasis[sizeOf(i)] == 0.0)
                    continue;
                for (int j = 0; j < mpts; ++j) {
                    if (mbasis[sizeOf(j)] == 0.0)
                        continue;
                    const double *const point = net + 4 * (qptrdiff(i) * mpts + j);
                    const double factor =
                        mbasis[sizeOf(j)] * (point[3] * nbasis[sizeOf(i)]) / sum;
                    for (int axis = 0; axis < 3; ++axis)
                        sample[axis] += point[axis] * factor;
                }
            }
            w += stepw;
        }
        u += stepu;
    }
    work.clear();
}
