#include "terrain/firstcamera.h"

#include "base/pi.h"
#include "base/progress.h"
#include "base/vectors.h"
#include "raster/elevationcolumns.h"
#include "render/transformation.h"
#include "scene/fieldlimits.h"
#include "scene/standardcamera.h"

#include <QRect>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <optional>

namespace {

// Texels at the edge which the smooth reading of a texture leaves to the background.
constexpr double EdgeTexels = 4.0;
constexpr double LargestEdge = 0.2; // of a small terrain

// How far the camera stays from the ground, of the terrain's smaller side.
constexpr double LeastClearance = 0.08;
constexpr double LeastSight = 0.55;    // along the line of sight
constexpr double StepOfSearch = 0.012; // of the line from the start to the ground
constexpr int StepsOfSearch = 400;
constexpr int CoarseColumns = 32; // one of so many is looked at first
constexpr int RowsApart = 8;      // of the rows in which columns are looked at

struct Box {
    double west, south, east, north;
};

// Asks every few milliseconds whether the search may go on.
class Patience {
public:
    explicit Patience(Progress &progress) : m_progress(progress) {}

    // `place` of all the places that may be looked at.
    void come(int place, int places)
    {
        m_place = place;
        m_places = places;
    }
    [[nodiscard]] bool mayGoOn()
    {
        constexpr int LooksAtOnce = 8;
        constexpr std::chrono::milliseconds BetweenQuestions{5};
        if (m_looks++ % LooksAtOnce != 0)
            return !m_isStopped;
        const auto now = std::chrono::steady_clock::now();
        if (m_isStopped || now - m_asked < BetweenQuestions)
            return !m_isStopped;
        m_asked = now;
        m_isStopped = !m_progress.step(m_place, m_places);
        return !m_isStopped;
    }
    [[nodiscard]] bool isStopped() const { return m_isStopped; }

private:
    Progress &m_progress;
    int m_place = 0;
    int m_places = 1;
    unsigned int m_looks = 0;
    bool m_isStopped = false;
    std::chrono::steady_clock::time_point m_asked;
};

// What one place of the camera shows.
class Sight {
public:
    Sight(const MeshSurface &surface, const SceneryData &data, bool voidsCount,
          Patience &patience)
        : m_surface(surface), m_patience(patience), m_voidsCount(voidsCount),
          m_width(data.AusBreite), m_height(data.AusHoehe),
          m_view(nullptr, C4Vector{0.0, 0.0, -1.0, 0.0}, data.AusBreite, data.AusHoehe)
    {
        const double edgeX = std::min(EdgeTexels, LargestEdge * surface.width());
        const double edgeY = std::min(EdgeTexels, LargestEdge * surface.depth());
        m_inside = {edgeX, edgeY, surface.width() - edgeX, surface.depth() - edgeY};
        const double turn = Pi / 180.0;
        m_view.SetView({data.BeobXA, data.BeobYA, data.BeobZA, 1.0},
                       data.RichtungA * turn, data.NeigungA * turn, data.BrennA,
                       data.VerkantenA * turn);
    }

    // Whether the camera is well above the ground, and the sea, from below which the
    // renderer finds no terrain, and not close before the ground.
    [[nodiscard]] bool isClear() const
    {
        const double side = std::min(m_surface.width(), m_surface.depth());
        const C4Vector place = m_view.Beobachter();
        const double ground = std::max(m_surface.at(place.x, place.y), 0.0);
        const std::optional<double> sight = distance(m_width * 0.5, m_height * 0.5);
        return place.z >= ground + LeastClearance * side &&
               (!sight || *sight >= LeastSight * side);
    }

    // Whether terrain shows in all columns of the lowest row.
    [[nodiscard]] bool fillsLowestRow() const
    {
        return allColumns([this](int x) { return shows(x, m_height - 1); });
    }

    // Whether terrain shows anywhere in all columns.
    [[nodiscard]] bool fillsColumns() const
    {
        return allColumns([this](int x) {
            for (int y = m_height - 1; y >= 0 && !m_patience.isStopped(); y -= RowsApart)
                if (shows(x, y))
                    return true;
            return false;
        });
    }

private:
    // A few columns tell most places that are none before all are looked at.
    template <class Holds> [[nodiscard]] bool allColumns(const Holds &holds) const
    {
        if (!holds(m_width - 1))
            return false;
        for (const int apart : {CoarseColumns, 1})
            for (int x = 0; x < m_width; x += apart)
                if (!holds(x))
                    return false;
        return true;
    }

    // A search that is stopped finds nothing any more.
    [[nodiscard]] bool shows(double px, double py) const
    {
        return m_patience.mayGoOn() && distance(px, py).has_value();
    }

    // Along the ray of a pixel to the ground inside the terrain; nothing without it.
    [[nodiscard]] std::optional<double> distance(double px, double py) const
    {
        const PixelRay ray = m_view.ray(px, py);
        const double length = std::hypot(ray.x, ray.y, ray.z);
        const C4Vector from = m_view.Beobachter();
        const double dx = ray.x / length;
        const double dy = ray.y / length;
        const double dz = ray.z / length;
        const double along = std::max(std::hypot(dx, dy), 1e-6);
        const double step = 0.5 * m_surface.step() / along;
        // From where it comes down to the highest ground until it is below the lowest.
        const double begin = std::max((m_surface.highest() - from.z) / dz, 0.0);
        const double end = dz < 0.0 ? (m_surface.lowest() - 1.0 - from.z) / dz : 0.0;
        const auto [enters, leaves] = crossing(from, dx, dy);
        for (double t = std::max(begin, enters); t <= std::min(end, leaves); t += step) {
            const double x = from.x + t * dx;
            const double y = from.y + t * dy;
            if (from.z + t * dz > m_surface.at(x, y))
                continue;
            return isInside(x, y) ? std::optional(t) : std::nullopt;
        }
        return std::nullopt;
    }

    // Where a ray runs above the terrain.
    [[nodiscard]] std::pair<double, double> crossing(const C4Vector &from, double dx,
                                                     double dy) const
    {
        double enters = 0.0;
        double leaves = std::numeric_limits<double>::max();
        const auto limit = [&](double start, double direction, double side) {
            if (std::abs(direction) < 1e-12)
                return;
            const double a = -start / direction;
            const double b = (side - start) / direction;
            enters = std::max(enters, std::min(a, b));
            leaves = std::min(leaves, std::max(a, b));
        };
        limit(from.x, dx, m_surface.width());
        limit(from.y, dy, m_surface.depth());
        return {enters, leaves};
    }

    [[nodiscard]] bool isInside(double x, double y) const
    {
        return x >= m_inside.west && x <= m_inside.east && y >= m_inside.south &&
               y <= m_inside.north && (m_voidsCount || !m_surface.isVoid(x, y));
    }

    const MeshSurface &m_surface;
    Patience &m_patience;
    bool m_voidsCount; // as terrain
    int m_width;
    int m_height;
    Transformation m_view;
    Box m_inside{};
};

// The standard camera, higher by some, and some way along its line of sight.
SceneryData placed(SceneryData data, const QSize &texture, double raised, double way)
{
    setStandardCamera(data, texture, FlightEnd::First);
    const double turn = Pi / 180.0;
    data.BeobYA += way * std::cos(data.NeigungA * turn);
    data.BeobZA += raised + way * std::sin(data.NeigungA * turn);
    return data;
}

// What is asked of a place of the camera.
struct Wish {
    double raised;    // by which the camera stands higher
    bool isLowestRow; // terrain is to fill it, or else to show in all columns
    bool voidsCount;
};

// The first place along the line of sight that is good; nothing where there is none
// before the camera comes too near to the ground, or the search was stopped.
std::optional<SceneryData> search(const MeshSurface &surface, const QSize &texture,
                                  const SceneryData &data, const Wish &wish,
                                  Patience &patience)
{
    const double whole = 1.5 * std::sqrt(2.0) * texture.height(); // to the height of 0
    for (int i = 0; i < StepsOfSearch && !patience.isStopped(); ++i) {
        patience.come(i, StepsOfSearch);
        const double way = whole * (1.0 - std::pow(1.0 - StepOfSearch, i));
        const SceneryData there = placed(data, texture, wish.raised, way);
        const Sight sight(surface, there, wish.voidsCount, patience);
        if (!(wish.isLowestRow ? sight.fillsLowestRow() : sight.fillsColumns()))
            continue;
        if (sight.isClear())
            return there;
        break;
    }
    return std::nullopt;
}

std::optional<SceneryData> searchAll(const MeshSurface &surface, const QSize &texture,
                                     const SceneryData &data, Patience &patience)
{
    const double middle = surface.at(surface.width() * 0.5, surface.depth() * 0.5);
    const double above = std::max(middle, 0.0);
    const Wish wishes[] = {
        {0.0, true, false},  {above, true, false}, {0.0, true, true},
        {above, true, true}, {0.0, false, false},  {above, false, false},
        {0.0, false, true},  {above, false, true}, {surface.highest(), false, true}};
    for (const Wish &wish : wishes)
        if (auto found = search(surface, texture, data, wish, patience))
            return found;
    return std::nullopt;
}

void copyToLast(SceneryData &data)
{
    data.BeobXE = data.BeobXA;
    data.BeobYE = data.BeobYA;
    data.BeobZE = data.BeobZA;
    data.RichtungE = data.RichtungA;
    data.NeigungE = data.NeigungA;
    data.BrennE = data.BrennA;
    data.VerkantenE = data.VerkantenA;
}

} // namespace

MeshSurface::MeshSurface(const ElevationImage &elevation, const std::vector<bool> &isVoid,
                         const SceneryData &data)
    : m_width(elevation.width() * data.HDateiSkalaX),
      m_depth(elevation.height() * data.HDateiSkalaY), m_columns(data.AusAuflX),
      m_rows(data.AusAuflY), m_pixels(elevation.size()), m_isVoid(isVoid),
      m_heights(std::size_t(m_columns + 1) * std::size_t(m_rows + 1))
{
    // The picture itself is read in pixels, with the arithmetic of the stretched one.
    const double pixelsX = 1.0 / data.HDateiSkalaX;
    const double pixelsY = 1.0 / data.HDateiSkalaY;
    m_lowest = std::numeric_limits<double>::max();
    m_highest = std::numeric_limits<double>::lowest();
    const double scale = data.HDateiSkalaZA;
    std::vector<double> line(std::size_t(m_columns) + 1);
    for (int column = 0; column <= m_columns; ++column)
        line[std::size_t(column)] = column * (m_width / m_columns) * pixelsX;
    const ElevationColumns columns(elevation, line);
    auto *to = m_heights.data();
    for (int row = 0; row <= m_rows; ++row) {
        columns.read(row * (m_depth / m_rows) * pixelsY, 0, m_columns + 1, line.data());
        for (const double steps : line) {
            const double height = steps * scale;
            m_lowest = std::min(m_lowest, height);
            m_highest = std::max(m_highest, height);
            *to++ = static_cast<float>(height);
        }
    }
}

double MeshSurface::step() const
{
    return std::min(m_width / m_columns, m_depth / m_rows);
}

// The renderer mixes the heights and colours of the cells around a place, so that one of
// them shows from a little way off.
bool MeshSurface::isVoid(double x, double y) const
{
    constexpr int Around = 4; // cells, as at the edge
    if (m_isVoid.empty())
        return false;
    const int column = static_cast<int>(std::lround(x / m_width * m_pixels.width()));
    const int row = m_pixels.height() - 1 -
                    static_cast<int>(std::lround(y / m_depth * m_pixels.height()));
    const QRect near =
        QRect(column - Around, row - Around, 2 * Around + 1, 2 * Around + 1) &
        QRect(QPoint(0, 0), m_pixels);
    for (int j = near.top(); j <= near.bottom(); ++j)
        for (int i = near.left(); i <= near.right(); ++i)
            if (m_isVoid[std::size_t(j) * std::size_t(m_pixels.width()) + std::size_t(i)])
                return true;
    return false;
}

double MeshSurface::at(double x, double y) const
{
    const double column = x / m_width * m_columns;
    const double row = y / m_depth * m_rows;
    if (!(column >= 0.0 && row >= 0.0 && column < m_columns && row < m_rows))
        return 0.0;
    const auto left = static_cast<std::size_t>(column);
    const auto below = static_cast<std::size_t>(row);
    const double right = column - double(left);
    const double up = row - double(below);
    const std::size_t perRow = std::size_t(m_columns) + 1;
    const float *const h = m_heights.data() + below * perRow + left;
    const double lower = h[0] + right * (h[1] - h[0]);
    const double upper = h[perRow] + right * (h[perRow + 1] - h[perRow]);
    return lower + up * (upper - lower);
}

bool setFirstCamera(const MeshSurface &surface, const QSize &texture, SceneryData &data,
                    Progress &progress)
{
    const SceneryData far = placed(data, texture, std::max(surface.highest(), 0.0), 0.0);
    Patience patience(progress);
    data = asShown(searchAll(surface, texture, data, patience).value_or(far));
    copyToLast(data);
    return !patience.isStopped();
}
