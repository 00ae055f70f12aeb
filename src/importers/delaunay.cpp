#include "importers/delaunay.h"

#include "importers/sphereindex.h"

#include <QCoreApplication>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace {

constexpr double LargestFloat = FLT_MAX;
constexpr double JitterPerExtent = 0.00001;
constexpr double FlatDeterminant = 0.00001;
constexpr double InsteadOfZero = 0.000000000001;
constexpr std::int32_t Removed = -1;

enum ReturnCode {
    Success,
    BadDimension,
    NoBoundsOrFacesExceeded,
    NoSystem,
    NoFaces,
    NoFreeSlots,
    NoSimplices,
    NoSpheres,
    NoTriangles,
    Stopped
};

class Messages {
    Q_DECLARE_TR_FUNCTIONS(Delaunay)
};

double determinantOf(const double *a, const double *b)
{
    return a[0] * b[1] - a[1] * b[0];
}

double determinantOf(const double *a, const double *b, const double *c)
{
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

template <int D> class Triangulation {
public:
    Triangulation(CDoubleMatrix &points, std::int32_t numPoints)
        : m_points(points), m_numPoints(std::max(numPoints, 0))
    {
    }

    /// The triangles, or why there are none.
    [[nodiscard]] DelaunayResult<DelaunayTriangles> run(Progress &progress);

private:
    static constexpr int Factorial = D == 2 ? 2 : 6;
    static constexpr std::int32_t FaceLimit = 150 * Factorial;

    ReturnCode prepare();
    ReturnCode insertAll(Progress &progress);
    ReturnCode output(DelaunayTriangles &triangles);
    ReturnCode findBounds();
    void perturb();
    ReturnCode encloseAll();
    ReturnCode allocateTables();
    bool insertPoint(std::int32_t i);
    bool openCavity(std::int32_t slot);
    bool toggleFace(const std::int32_t *simplex, int omitted);
    void closeCavity(std::int32_t i);
    void computeSphere(const std::int32_t *face, const double *q, double *sphere);
    void solveCentre(double *centre) const;
    [[nodiscard]] bool isOutput(const std::int32_t *simplex, double *determinant);

    CDoubleMatrix &m_points;
    const std::int32_t m_numPoints;
    std::int32_t m_maxSimplices = 0;
    std::int32_t m_numFaces = 0;
    std::int64_t m_stackPosition = 0; // moves on past the table when slots run out
    std::int32_t m_usedSlots = 0;     // slots from here on were never filled
    std::int32_t m_maxUsed = 0;       // highest slot in use so far

    CDoubleMatrix m_bounds; // row 0: extent, row 1: minimum
    CDoubleMatrix m_system;
    CIntMatrix m_faces;      // boundary of the cavity around the new point
    CIntVector m_freeSlots;  // stack
    CIntMatrix m_simplices;  // first entry below 0: removed
    CDoubleMatrix m_spheres; // centre, squared radius
    SphereIndex<D> m_index;
    std::vector<std::int32_t> m_hits;
};

template <int D> ReturnCode Triangulation<D>::findBounds()
{
    if (!m_bounds.Allocate(2, D))
        return NoBoundsOrFacesExceeded;
    double *const highest = m_bounds.rows[0];
    double *const lowest = m_bounds.rows[1];
    std::fill_n(highest, D, -LargestFloat);
    std::fill_n(lowest, D, LargestFloat);
    for (std::int32_t i = 0; i < m_numPoints; ++i) {
        const double *const p = m_points.rows[i];
        for (int c = 0; c < D; ++c) {
            if (p[c] > highest[c])
                highest[c] = p[c];
            if (p[c] < lowest[c])
                lowest[c] = p[c];
        }
    }
    for (int c = 0; c < D; ++c)
        highest[c] -= lowest[c];
    return Success;
}

// Grids have co-circular corners everywhere; a shift too small to see breaks the
// ties.
template <int D> void Triangulation<D>::perturb()
{
    const double *const extent = m_bounds.rows[0];
    double jitter = 0.0;
    for (int c = 0; c < D; ++c)
        jitter = std::max(jitter, extent[c] * JitterPerExtent);
    for (std::int32_t i = 0; i < m_numPoints; ++i)
        for (int c = 0; c < D; ++c) {
            double &v = m_points.rows[i][c];
            v = ((std::rand() / -2147483647.0) + 0.5) * jitter + v;
        }
}

template <int D> ReturnCode Triangulation<D>::encloseAll()
{
    if (!m_system.Allocate(D, D + 1))
        return NoSystem;
    for (int j = 0; j < D; ++j) {
        std::fill_n(m_system.rows[j], D + 1, -10.0);
        m_system.rows[j][j] = 10.0 * (3 * D - 1);
    }
    perturb();
    for (int k = 0; k <= D; ++k)
        for (int j = 0; j < D; ++j)
            m_points.rows[m_numPoints + k][j] =
                m_system.rows[j][k] * m_bounds.rows[0][j] + m_bounds.rows[1][j];
    return Success;
}

template <int D> ReturnCode Triangulation<D>::allocateTables()
{
    if (!m_faces.Allocate(FaceLimit + 1, D))
        return NoFaces;
    const std::int64_t wanted = (Factorial * 10000LL + m_numPoints) * Factorial;
    if (wanted > INT32_MAX)
        return NoFreeSlots;
    m_maxSimplices = static_cast<std::int32_t>(wanted);
    if (!m_freeSlots.Allocate(m_maxSimplices))
        return NoFreeSlots;
    for (std::int32_t slot = 0; slot < m_maxSimplices; ++slot)
        m_freeSlots.data[slot] = slot;
    if (!m_simplices.Allocate(m_maxSimplices, D + 1))
        return NoSimplices;
    if (!m_spheres.Allocate(m_maxSimplices, D + 1) ||
        !m_index.prepare(m_maxSimplices, m_bounds.rows[1], m_bounds.rows[0],
                         m_spheres.row(0)))
        return NoSpheres;
    return Success;
}

template <int D> ReturnCode Triangulation<D>::prepare()
{
    ReturnCode code = findBounds();
    if (code == Success)
        code = encloseAll();
    if (code == Success)
        code = allocateTables();
    if (code != Success)
        return code;

    for (int k = 0; k <= D; ++k)
        m_simplices.row(0)[k] = m_numPoints + k;
    std::fill_n(m_spheres.row(0), D, 0.0);
    m_spheres.row(0)[D] = LargestFloat;
    m_index.insert(0);
    m_usedSlots = 1;
    m_stackPosition = 1;
    return Success;
}

template <int D> ReturnCode Triangulation<D>::insertAll(Progress &progress)
{
    constexpr std::int32_t PointsPerStep = 256;
    for (std::int32_t i = 0; i < m_numPoints; ++i) {
        if (i % PointsPerStep == 0 && !progress.step(i, m_numPoints))
            return Stopped;
        if (!insertPoint(i))
            return NoBoundsOrFacesExceeded;
    }
    return Success;
}

DelaunayFailure failureOf(ReturnCode code, const QString &text = {})
{
    return code == Stopped ? DelaunayFailure{{QString(), true}, 0}
                           : DelaunayFailure{{text, false}, code};
}

template <int D>
DelaunayResult<DelaunayTriangles> Triangulation<D>::run(Progress &progress)
{
    ReturnCode code = prepare();
    if (code != Success)
        return tl::unexpected(failureOf(code));
    code = insertAll(progress);
    if (code != Success)
        return tl::unexpected(
            failureOf(code, Messages::tr("Temporary Delaunay storage exceeded.")));
    DelaunayTriangles triangles;
    code = output(triangles);
    if (code != Success)
        return tl::unexpected(failureOf(code));
    return triangles;
}

template <int D> bool Triangulation<D>::insertPoint(std::int32_t i)
{
    m_numFaces = 0;
    m_index.find(m_points.rows[i], m_hits);
    for (const std::int32_t slot : m_hits)
        if (!openCavity(slot))
            return false;
    closeCavity(i);
    return true;
}

// Removes a simplex whose sphere holds the new point.
template <int D> bool Triangulation<D>::openCavity(std::int32_t slot)
{
    --m_stackPosition;
    if (m_stackPosition < m_maxSimplices)
        m_freeSlots.data[m_stackPosition] = slot;
    std::int32_t *const simplex = m_simplices.row(slot);
    for (int k = 0; k <= D; ++k)
        if (!toggleFace(simplex, k))
            return false;
    simplex[0] = Removed;
    m_index.remove(slot);
    return true;
}

// A face met twice lies within the cavity and goes; any other is its boundary.
template <int D>
bool Triangulation<D>::toggleFace(const std::int32_t *simplex, int omitted)
{
    std::int32_t face[D];
    for (int k = 0, n = 0; k <= D; ++k)
        if (k != omitted)
            face[n++] = simplex[k];
    // The first simplex cannot meet its own faces.
    if (m_numFaces >= D + 1)
        for (std::int32_t f = 0; f < m_numFaces; ++f)
            if (std::equal(face, face + D, m_faces.row(f))) {
                --m_numFaces;
                std::copy_n(m_faces.row(m_numFaces), D, m_faces.row(f));
                return true;
            }
    if (m_numFaces > FaceLimit)
        return false;
    std::copy_n(face, D, m_faces.row(m_numFaces));
    ++m_numFaces;
    return true;
}

// Joins each face of the cavity with the new point.
template <int D> void Triangulation<D>::closeCavity(std::int32_t i)
{
    for (std::int32_t f = 0; f < m_numFaces; ++f, ++m_stackPosition) {
        if (m_stackPosition > m_maxUsed)
            m_maxUsed = static_cast<std::int32_t>(
                std::min<std::int64_t>(m_stackPosition, INT32_MAX));
        if (m_stackPosition >= m_maxSimplices)
            continue;
        const std::int32_t slot = m_freeSlots.data[m_stackPosition];
        const std::int32_t *const face = m_faces.row(f);
        computeSphere(face, m_points.rows[i], m_spheres.row(slot));
        std::int32_t *const simplex = m_simplices.row(slot);
        std::copy_n(face, D, simplex);
        simplex[D] = i;
        m_index.insert(slot);
        m_usedSlots = std::max(m_usedSlots, slot + 1);
    }
}

template <int D>
void Triangulation<D>::computeSphere(const std::int32_t *face, const double *q,
                                     double *sphere)
{
    for (int a = 0; a < D; ++a) {
        const double *const p = m_points.rows[face[a]];
        double *const row = m_system.row(a);
        row[D] = 0.0;
        for (int e = 0; e < D; ++e) {
            row[e] = p[e] - q[e];
            row[D] += (p[e] + q[e]) * row[e] * 0.5;
        }
    }
    solveCentre(sphere);
    double radius = 0.0;
    for (int e = 0; e < D; ++e)
        radius += (q[e] - sphere[e]) * (q[e] - sphere[e]);
    sphere[D] = radius;
}

template <> void Triangulation<2>::solveCentre(double *centre) const
{
    const double *const s0 = m_system.row(0);
    const double *const s1 = m_system.row(1);
    double determinant = s0[0] * s1[1] - s1[0] * s0[1];
    if (determinant == 0.0)
        determinant = InsteadOfZero;
    centre[0] = (s1[1] * s0[2] - s0[1] * s1[2]) / determinant;
    centre[1] = (s0[0] * s1[2] - s1[0] * s0[2]) / determinant;
}

template <> void Triangulation<3>::solveCentre(double *centre) const
{
    double rows[3][3];
    for (int a = 0; a < 3; ++a)
        std::copy_n(m_system.row(a), 3, rows[a]);
    const double determinant = determinantOf(rows[0], rows[1], rows[2]);
    for (int c = 0; c < 3; ++c) {
        for (int a = 0; a < 3; ++a)
            rows[a][c] = m_system.row(a)[3];
        centre[c] = determinantOf(rows[0], rows[1], rows[2]) / determinant;
        for (int a = 0; a < 3; ++a)
            rows[a][c] = m_system.row(a)[c];
    }
}

template <int D>
bool Triangulation<D>::isOutput(const std::int32_t *simplex, double *determinant)
{
    if (simplex[0] == Removed || simplex[0] >= m_numPoints)
        return false;
    const double *const last = m_points.rows[simplex[D]];
    for (int a = 0; a < D; ++a)
        for (int e = 0; e < D; ++e)
            m_system.row(a)[e] = m_points.rows[simplex[a]][e] - last[e];
    if constexpr (D == 2)
        *determinant = determinantOf(m_system.row(0), m_system.row(1));
    else
        *determinant = determinantOf(m_system.row(0), m_system.row(1), m_system.row(2));
    return !(std::fabs(*determinant) <= FlatDeterminant);
}

template <int D> ReturnCode Triangulation<D>::output(DelaunayTriangles &triangles)
{
    double determinant = 0.0;
    std::int32_t count = 0;
    for (std::int32_t slot = 0; slot < m_usedSlots; ++slot)
        count += isOutput(m_simplices.row(slot), &determinant) ? 1 : 0;
    if (!triangles.corners.Allocate(count, D + 1))
        return NoTriangles;

    std::int32_t stored = 0;
    for (std::int32_t slot = 0; slot < m_usedSlots; ++slot) {
        const std::int32_t *const simplex = m_simplices.row(slot);
        if (!isOutput(simplex, &determinant))
            continue;
        std::int32_t *const row = triangles.corners.rows[stored++];
        std::copy_n(simplex, D + 1, row);
        if (determinant < 0.0)
            std::swap(row[D - 1], row[D]);
    }
    triangles.count = count;
    triangles.maxSimplices = m_maxSimplices;
    triangles.maxUsed = m_maxUsed;
    return Success;
}

} // namespace

DelaunayResult<DelaunayTriangles> Delaunay(CDoubleMatrix &points, std::int32_t numPoints,
                                           int dimension, Progress &progress)
{
    if (dimension == 2)
        return Triangulation<2>(points, numPoints).run(progress);
    if (dimension == 3)
        return Triangulation<3>(points, numPoints).run(progress);
    return tl::unexpected(failureOf(
        BadDimension,
        Messages::tr(
            "The built-in Delaunay function can only handle 2 or 3 dimensions.")));
}
