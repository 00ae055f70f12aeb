#include "geodata/smoothtransform.h"

#include "base/pi.h"
#include "geodata/crs.h"

#include <cpl_string.h>

#include <algorithm>
#include <cmath>

namespace {

// Cells on a side of a patch.
constexpr int Side = 64;
// Of a cell of the raster: half a centimetre of height on the steepest slopes of large
// cells, and far less on others.
constexpr double MostError = 1e-5;
// Some megabytes.
constexpr std::size_t MostPatches = 8192;
// Places at which a patch is compared with the exact way, in halves of its side.
constexpr std::array<double, 5> Trials{-1.0, -0.55, 0.07, 0.6, 1.0};

// Places of Chebyshev's nodes, at which a polynomial errs least between them.
template <int N> std::array<double, N> nodes()
{
    std::array<double, N> places{};
    for (int i = 0; i < N; ++i)
        places[std::size_t(i)] = std::cos(Pi * (i + 0.5) / N);
    return places;
}

// The matrix that makes the factors of a polynomial out of its values at the nodes: row p
// holds the factors of the power p in the polynomials that are 1 at one node and 0 at all
// others.
template <int N> std::array<double, std::size_t(N) * N> inverseVandermonde()
{
    const std::array<double, N> at = nodes<N>();
    std::array<double, std::size_t(N) * N> inverse{};
    for (int node = 0; node < N; ++node) {
        std::array<double, N> factors{};
        factors[0] = 1.0;
        int degree = 0;
        for (int other = 0; other < N; ++other) {
            if (other == node)
                continue;
            const double root = at[std::size_t(other)];
            const double scale = 1.0 / (at[std::size_t(node)] - root);
            ++degree;
            for (int p = degree; p >= 0; --p) {
                const double lower = p > 0 ? factors[std::size_t(p - 1)] : 0.0;
                factors[std::size_t(p)] =
                    (lower - root * factors[std::size_t(p)]) * scale;
            }
        }
        for (int p = 0; p < N; ++p)
            inverse[std::size_t(p * N + node)] = factors[std::size_t(p)];
    }
    return inverse;
}

// Factors of x to the power p times y to the power q, at q * N + p, from values at nodes.
template <int N> std::array<double, std::size_t(N) * N> factorsOf(const double *values)
{
    static const auto inverse = inverseVandermonde<N>();
    std::array<double, std::size_t(N) * N> rows{};
    std::array<double, std::size_t(N) * N> factors{};
    for (int row = 0; row < N; ++row)
        for (int p = 0; p < N; ++p)
            for (int i = 0; i < N; ++i)
                rows[std::size_t(row * N + p)] +=
                    inverse[std::size_t(p * N + i)] * values[row * N + i];
    for (int q = 0; q < N; ++q)
        for (int p = 0; p < N; ++p)
            for (int i = 0; i < N; ++i)
                factors[std::size_t(q * N + p)] +=
                    inverse[std::size_t(q * N + i)] * rows[std::size_t(i * N + p)];
    return factors;
}

// The polynomial of x alone that is left in one row of a patch.
template <int N>
std::array<double, N> alongRow(const std::array<double, std::size_t(N) * N> &factors,
                               double v)
{
    std::array<double, N> row{};
    for (int p = 0; p < N; ++p) {
        double sum = 0.0;
        for (int q = N - 1; q >= 0; --q)
            sum = sum * v + factors[std::size_t(q * N + p)];
        row[std::size_t(p)] = sum;
    }
    return row;
}

template <int N> double at(const std::array<double, N> &factors, double u)
{
    double sum = 0.0;
    for (int p = N - 1; p >= 0; --p)
        sum = sum * u + factors[std::size_t(p)];
    return sum;
}

int patchOf(double place) { return static_cast<int>(std::floor(place / Side)); }

// Of a place in its patch: -1 at one edge, 1 at the other.
double inPatch(double place, int patch)
{
    return (place - patch * double(Side)) * (2.0 / Side) - 1.0;
}

double fromPatch(double share, int patch)
{
    return (share + 1.0) * (Side / 2.0) + patch * double(Side);
}

} // namespace

void TransformerDeleter::operator()(void *transformer) const
{
    GDALDestroyGenImgProjTransformer(transformer);
}

std::unique_ptr<SmoothTransform> SmoothTransform::between(GDALDatasetH source,
                                                          const OutputGrid &grid)
{
    CPLStringList options;
    const QString own = QString::fromUtf8(GDALGetProjectionRef(source));
    if (!grid.crs.isEmpty())
        options.SetNameValue("DST_SRS", grid.crs.toUtf8().constData());
    std::unique_ptr<SmoothTransform> made(new SmoothTransform);
    made->m_exact.reset(
        GDALCreateGenImgProjTransformer2(source, nullptr, options.List()));
    if (!made->m_exact)
        return nullptr;
    GDALSetGenImgProjTransformerDstGeoTransform(made->m_exact.get(),
                                                grid.transform.data());
    made->m_isAffine = grid.crs.isEmpty() || own.isEmpty() || isSameCrs(own, grid.crs);
    return made;
}

GDALTransformerFunc SmoothTransform::function() const
{
    return m_isAffine ? GDALGenImgProjTransform : transform;
}

void *SmoothTransform::data() { return m_isAffine ? m_exact.get() : this; }

int SmoothTransform::transform(void *self, int toSource, int count, double *x, double *y,
                               double *z, int *ok)
{
    auto *const smooth = static_cast<SmoothTransform *>(self);
    if (toSource == 0)
        return GDALGenImgProjTransform(smooth->m_exact.get(), toSource, count, x, y, z,
                                       ok);
    return smooth->toSource(count, x, y, z, ok);
}

int SmoothTransform::toSource(int count, double *x, double *y, double *z, int *ok)
{
    for (int i = 0; i < count;) {
        const int column = patchOf(x[i]);
        const int row = patchOf(y[i]);
        int end = i + 1;
        while (end < count && y[end] == y[i] && patchOf(x[end]) == column)
            ++end;
        const Patch &patch = patchAt(column, row);
        if (!patch.isSmooth) {
            GDALGenImgProjTransform(m_exact.get(), 1, end - i, x + i, y + i, z + i,
                                    ok + i);
            i = end;
            continue;
        }
        const double v = inPatch(y[i], row);
        const std::array<double, Nodes> rowX = alongRow<Nodes>(patch.x, v);
        const std::array<double, Nodes> rowY = alongRow<Nodes>(patch.y, v);
        for (; i < end; ++i) {
            const double u = inPatch(x[i], column);
            x[i] = at<Nodes>(rowX, u);
            y[i] = at<Nodes>(rowY, u);
            ok[i] = 1;
        }
    }
    return 1;
}

const SmoothTransform::Patch &SmoothTransform::patchAt(int column, int row)
{
    const std::uint64_t key =
        (std::uint64_t(std::uint32_t(row)) << 32U) | std::uint32_t(column);
    const auto known = m_patches.find(key);
    if (known != m_patches.end())
        return known->second;
    if (m_patches.size() >= MostPatches)
        m_patches.clear();
    return m_patches.emplace(key, fitPatch(column, row)).first->second;
}

bool SmoothTransform::exactly(std::vector<double> &x, std::vector<double> &y)
{
    std::vector<double> z(x.size(), 0.0);
    std::vector<int> ok(x.size(), 0);
    const bool done =
        GDALGenImgProjTransform(m_exact.get(), 1, static_cast<int>(x.size()), x.data(),
                                y.data(), z.data(), ok.data()) != 0;
    return done && std::all_of(ok.begin(), ok.end(), [](int each) { return each != 0; });
}

SmoothTransform::Patch SmoothTransform::fitPatch(int column, int row)
{
    static const std::array<double, Nodes> places = nodes<Nodes>();
    std::vector<double> x;
    std::vector<double> y;
    const auto add = [&](double u, double v) {
        x.push_back(fromPatch(u, column));
        y.push_back(fromPatch(v, row));
    };
    for (const double v : places)
        for (const double u : places)
            add(u, v);
    for (const double v : Trials)
        for (const double u : Trials)
            add(u, v);
    Patch patch;
    if (!exactly(x, y))
        return patch;
    patch.x = factorsOf<Nodes>(x.data());
    patch.y = factorsOf<Nodes>(y.data());
    patch.isSmooth = true;
    std::size_t i = std::size_t(Nodes) * Nodes;
    for (const double v : Trials)
        for (const double u : Trials) {
            const double errorX = x[i] - at<Nodes>(alongRow<Nodes>(patch.x, v), u);
            const double errorY = y[i] - at<Nodes>(alongRow<Nodes>(patch.y, v), u);
            // False for what is no number.
            patch.isSmooth &=
                std::abs(errorX) <= MostError && std::abs(errorY) <= MostError;
            ++i;
        }
    return patch;
}

double SmoothTransform::cellsPerCell(const QSize &grid, const QSize &raster)
{
    constexpr int Steps = 8;
    double most = 0.0;
    for (int i = 0; i <= Steps; ++i)
        for (int j = 0; j <= Steps; ++j) {
            const double atX = double(grid.width() - 1) * i / Steps;
            const double atY = double(grid.height() - 1) * j / Steps;
            std::vector<double> x{atX, atX + 1.0, atX};
            std::vector<double> y{atY, atY, atY + 1.0};
            if (!exactly(x, y) || x[0] < 0.0 || y[0] < 0.0 || x[0] > raster.width() ||
                y[0] > raster.height())
                continue;
            for (const std::size_t k : {std::size_t(1), std::size_t(2)})
                most = std::max({most, std::abs(x[k] - x[0]), std::abs(y[k] - y[0])});
        }
    return std::isfinite(most) && most > 0.0 ? most : 1.0;
}
