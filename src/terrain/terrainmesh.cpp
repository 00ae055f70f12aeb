#include "terrain/terrainmesh.h"

#include "base/pi.h"
#include "terrain/abandonable.h"

#include <boost/polygon/voronoi_builder.hpp>

#include <QObject>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr double Reach = 1 << 30; // of the whole coordinates, from 0
constexpr qint64 StepsBetweenLooks = 1 << 12;

struct Stopped {};

// Looks now and then whether anybody waits; there is no other way out of the library.
class Watch {
public:
    explicit Watch(AbandonableState &state) : m_state(state) {}
    void step()
    {
        if (++m_steps % StepsBetweenLooks != 0)
            return;
        m_state.done = m_steps;
        if (m_state.stopped)
            throw Stopped();
    }

private:
    AbandonableState &m_state;
    qint64 m_steps = 0;
};

// Takes the triangles from the sweep line: one for each of the diagram's corners, where
// the edges between three sites meet.
class TriangleSink {
public:
    TriangleSink(std::vector<std::array<qint32, 3>> &triangles, AbandonableState &state)
        : m_triangles(triangles), m_watch(state)
    {
    }

    // What the library calls; see its voronoi_builder.
    void _reserve(std::size_t sites)
    {
        m_edges.reserve(3 * sites);
        m_triangles.reserve(2 * sites);
    }
    template <typename Site> void _process_single_site(const Site &) {}
    template <typename Site>
    std::pair<void *, void *> _insert_new_edge(const Site &one, const Site &other)
    {
        return added(one, other);
    }
    template <typename Site, typename Circle>
    std::pair<void *, void *> _insert_new_edge(const Site &one, const Site &third,
                                               const Circle &, void *edge, void *)
    {
        const Edge &first = m_edges[reinterpret_cast<std::uintptr_t>(edge) - 1];
        const auto start = qint32(one.initial_index());
        const qint32 middle = first.one == start ? first.other : first.one;
        m_triangles.push_back({start, middle, qint32(third.initial_index())});
        return added(one, third);
    }
    void _build() {}

private:
    struct Edge {
        qint32 one;
        qint32 other;
    };

    // The library keeps the number of an edge where it would keep a pointer to it.
    template <typename Site>
    std::pair<void *, void *> added(const Site &one, const Site &other)
    {
        m_watch.step();
        m_edges.push_back({qint32(one.initial_index()), qint32(other.initial_index())});
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is never followed.
        void *const number = reinterpret_cast<void *>(m_edges.size());
        return {number, number};
    }

    std::vector<std::array<qint32, 3>> &m_triangles;
    std::vector<Edge> m_edges;
    Watch m_watch;
};

// A place on whole coordinates, as one number that sorts by x.
struct Place {
    std::uint64_t key;
    qint32 point;
};

class WholePlaces {
public:
    WholePlaces(const std::vector<GroundPoint> &points, const PlaneScale &scale)
        : m_west(points.front().x), m_south(points.front().y), m_scale(scale)
    {
        double east = m_west;
        double north = m_south;
        for (const GroundPoint &point : points) {
            m_west = std::min(m_west, point.x);
            m_south = std::min(m_south, point.y);
            east = std::max(east, point.x);
            north = std::max(north, point.y);
        }
        const double extent =
            std::max((east - m_west) * scale.x, (north - m_south) * scale.y);
        m_unit = extent > 0.0 ? Reach / extent : 1.0;
    }
    [[nodiscard]] int x(const GroundPoint &point) const
    {
        return int(std::lround((point.x - m_west) * m_scale.x * m_unit));
    }
    [[nodiscard]] int y(const GroundPoint &point) const
    {
        return int(std::lround((point.y - m_south) * m_scale.y * m_unit));
    }
    [[nodiscard]] std::uint64_t key(const GroundPoint &point) const
    {
        return std::uint64_t(x(point)) << 32 | std::uint64_t(y(point));
    }

private:
    double m_west;
    double m_south;
    PlaneScale m_scale;
    double m_unit;
};

// One point for each place, sorted.
std::vector<GroundPoint> withoutDoubles(const std::vector<GroundPoint> &points,
                                        const WholePlaces &whole)
{
    std::vector<Place> places;
    places.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        places.push_back({whole.key(points[i]), qint32(i)});
    std::sort(places.begin(), places.end(), [](const Place &a, const Place &b) {
        return a.key != b.key ? a.key < b.key : a.point < b.point;
    });
    std::vector<GroundPoint> kept;
    kept.reserve(points.size());
    for (std::size_t i = 0; i < places.size();) {
        GroundPoint point = points[std::size_t(places[i].point)];
        double sum = 0.0;
        std::size_t end = i;
        for (; end < places.size() && places[end].key == places[i].key; ++end)
            sum += points[std::size_t(places[end].point)].z;
        if (end > i + 1)
            point.z = sum / double(end - i);
        kept.push_back(point);
        i = end;
    }
    return kept;
}

std::optional<TerrainMesh> build(const std::vector<GroundPoint> &points,
                                 const PlaneScale &scale, AbandonableState &state)
{
    TerrainMesh mesh;
    mesh.scale = scale;
    if (points.empty())
        return mesh;
    const WholePlaces whole(points, scale);
    mesh.points = withoutDoubles(points, whole);
    boost::polygon::voronoi_builder<std::int32_t> builder;
    for (const GroundPoint &point : mesh.points)
        builder.insert_point(whole.x(point), whole.y(point));
    try {
        TriangleSink sink(mesh.triangles, state);
        builder.construct(&sink);
    } catch (const Stopped &) {
        return {};
    }
    return mesh;
}

} // namespace

PlaneScale metresOfDegrees(double latitude)
{
    // Series of the lengths of a degree on the ellipsoid of WGS 84 (American Practical
    // Navigator, table of the lengths of degrees).
    const double angle = latitude * Pi / 180.0;
    return {111412.84 * std::cos(angle) - 93.5 * std::cos(3 * angle) +
                0.118 * std::cos(5 * angle),
            111132.92 - 559.82 * std::cos(2 * angle) + 1.175 * std::cos(4 * angle) -
                0.0023 * std::cos(6 * angle)};
}

qint64 meshMemory(qint64 points)
{
    // Points twice, places, sites, edges, triangles, and the sweep line's own.
    constexpr qint64 BytesOfAPoint = 2 * 24 + 16 + 32 + 24 + 24 + 40;
    return points * BytesOfAPoint;
}

Result<TerrainMesh> triangulated(std::vector<GroundPoint> points, const PlaneScale &scale,
                                 const QString &name, Progress &progress)
{
    std::erase_if(points, [](const GroundPoint &point) { return std::isnan(point.z); });
    const auto count = qint64(points.size());
    constexpr qint64 EdgesOfAPoint = 3;
    auto mesh = runAbandonable<TerrainMesh>(
        [own = std::move(points), scale](AbandonableState &state) {
            return build(own, scale, state);
        },
        EdgesOfAPoint * count, progress);
    if (!mesh)
        return mesh;
    if (mesh->points.size() < 3)
        return failed(QObject::tr("%1 has heights at %2 places; a surface needs three.")
                          .arg(name)
                          .arg(mesh->points.size()));
    if (mesh->triangles.empty())
        return failed(QObject::tr("All points of %1 lie on one line, which makes no "
                                  "surface.")
                          .arg(name));
    return mesh;
}
