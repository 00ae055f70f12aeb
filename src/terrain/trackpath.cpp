#include "terrain/trackpath.h"

#include "base/pi.h"
#include "flight/flightplan.h"
#include "flight/flightprofile.h"
#include "terrain/pathheights.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Whole coordinates are off by up to half a unit on each axis; closer than that is no
// use.
constexpr double NearEnough = 1.0;
// Looking down a little shows more ground than sky.
constexpr double Pitch = -10.0 / 180.0 * Pi;
// Of the form; a path must stay within what the told fields hold.
constexpr double Farthest = 1000000.0;
constexpr int PlacesOfAPoint = 40; // of the line that is fitted
constexpr int PlacesOfAFrame = 16; // at which the ground is looked at

// The path in the plan, on whole coordinates.
struct Plan {
    FlightSpline spline;
    std::vector<double> x;
    std::vector<double> y;
};

std::vector<double> column(const std::vector<LinePoint> &line, double LinePoint::*member)
{
    std::vector<double> values;
    values.reserve(line.size());
    for (const LinePoint &point : line)
        values.push_back(point.*member);
    return values;
}

std::vector<double> wholeNumbers(std::vector<double> values)
{
    for (double &value : values)
        value = std::clamp(std::round(value), -Farthest, Farthest);
    return values;
}

int placesFor(int points) { return std::max(2000, PlacesOfAPoint * points); }

Plan planWith(const TrackLine &line, int points)
{
    FlightSpline spline(points);
    const auto even = evenly(line.points, placesFor(points));
    std::vector<double> x = wholeNumbers(spline.fitted(column(even, &LinePoint::x)));
    std::vector<double> y = wholeNumbers(spline.fitted(column(even, &LinePoint::y)));
    return {std::move(spline), std::move(x), std::move(y)};
}

// Distances of a line from a path in the plan.
class PlanDistance {
public:
    PlanDistance(const Plan &plan, double unitX, double unitY)
        : m_unitX(unitX), m_unitY(unitY)
    {
        const int places = placesFor(plan.spline.size());
        m_reach = 2 * std::size_t(places) / std::size_t(plan.spline.size() - 3) + 2;
        for (int i = 0; i < places; ++i) {
            const double t = double(i) / (places - 1);
            m_curve.push_back({plan.spline.valueAt(t, plan.x) * unitX,
                               plan.spline.valueAt(t, plan.y) * unitY, 0.0});
        }
    }
    // The greatest distance of the line's points, each from the stretch of the path where
    // it belongs, so that a loop is not taken for its other side.
    // Looks no further once it is beyond `limit`.
    [[nodiscard]] double greatest(const TrackLine &line, double limit) const
    {
        std::vector<double> ways{0.0};
        for (std::size_t i = 1; i < line.points.size(); ++i)
            ways.push_back(ways.back() +
                           std::hypot(line.points[i].x - line.points[i - 1].x,
                                      line.points[i].y - line.points[i - 1].y));
        double most = 0.0;
        for (std::size_t i = 0; i < line.all.size() && most <= limit * limit; ++i)
            most =
                std::max(most, nearest(line.all[i], ways[line.nearest[i]] / ways.back()));
        return std::sqrt(most);
    }

private:
    // The square of the distance of a point from the curve about a share of its length.
    [[nodiscard]] double nearest(const LinePoint &point, double share) const
    {
        const auto middle = std::size_t(share * double(m_curve.size() - 1));
        const std::size_t first = middle > m_reach ? middle - m_reach : 0;
        const std::size_t last = std::min(middle + m_reach, m_curve.size() - 1);
        double least = std::numeric_limits<double>::max();
        for (std::size_t i = first; i < last; ++i)
            least = std::min(least, fromPiece(point, m_curve[i], m_curve[i + 1]));
        return least;
    }
    [[nodiscard]] double fromPiece(const LinePoint &point, const LinePoint &a,
                                   const LinePoint &b) const
    {
        const double px = point.x * m_unitX - a.x;
        const double py = point.y * m_unitY - a.y;
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        const double squared = dx * dx + dy * dy;
        const double share =
            squared > 0.0 ? std::clamp((px * dx + py * dy) / squared, 0.0, 1.0) : 0.0;
        const double ex = px - share * dx;
        const double ey = py - share * dy;
        return ex * ex + ey * ey;
    }

    double m_unitX;
    double m_unitY;
    std::size_t m_reach = 0;
    std::vector<LinePoint> m_curve;
};

// The plan with the fewest control points that is near enough, or with all of them.
Result<Plan> bestPlan(const TrackLine &line, int most, Progress &progress)
{
    for (int points = TrackPathOptions::FewestPoints;; points = points * 5 / 4 + 1) {
        const int used = std::min(points, most);
        if (!progress.step(used, 2 * qint64(most)))
            return stopped();
        Plan plan = planWith(line, used);
        if (used == most ||
            PlanDistance(plan, 1.0, 1.0).greatest(line, NearEnough) <= NearEnough)
            return plan;
    }
}

// The view along the path, where the curve over the waypoints has it: at the parameters
// at which each of them acts most. Full turns are added so that it never jumps.
QList<Waypoint> waypointsAlong(const Plan &plan, int level)
{
    const FlightSpline views(waypointCount(level));
    constexpr double Step = 1e-3;
    QList<Waypoint> waypoints;
    double heading = 0.0;
    for (int k = 0; k < views.size(); ++k) {
        const double t = views.centreOf(k);
        const double from = std::max(t - Step, 0.0);
        const double to = std::min(t + Step, 1.0);
        const double dx =
            plan.spline.valueAt(to, plan.x) - plan.spline.valueAt(from, plan.x);
        const double dy =
            plan.spline.valueAt(to, plan.y) - plan.spline.valueAt(from, plan.y);
        if (dx != 0.0 || dy != 0.0) {
            const double found = std::atan2(dx, dy);
            heading = k == 0 ? found
                             : found + 2 * Pi * std::round((heading - found) / (2 * Pi));
        }
        waypoints.append(Waypoint(0, 0, 0, heading, Pitch));
    }
    return waypoints;
}

// Twice as many views as control points follow every bend.
int levelFor(int points)
{
    int level = 0;
    while (level < MaxWaypointLevel && waypointCount(level) < 2 * points)
        ++level;
    return level;
}

// The lowest that a path may be, at even parameters.
std::vector<double> floorsAbove(const GroundUnder &ground, const SceneryWorld &world,
                                double clearance, int places)
{
    std::vector<double> floors;
    floors.reserve(std::size_t(places));
    constexpr double Margin = 1e-6; // the curve's own rounding does not go below
    for (int i = 0; i < places; ++i) {
        const double t = double(i) / (places - 1);
        const double units = std::fabs(world.unitsOfHeight(ground.zScaleAt(t)));
        floors.push_back(ground.at(t) + clearance * units + Margin);
    }
    return floors;
}

std::vector<double> trackHeights(const TrackLine &line, const GroundUnder &ground,
                                 const SceneryWorld &world, int points)
{
    std::vector<double> heights =
        column(evenly(line.points, placesFor(points)), &LinePoint::metres);
    constexpr double Noise = 1e-3; // of text; whole units are not rounded up for it
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double t = double(i) / double(heights.size() - 1);
        heights[i] = heights[i] * world.unitsOfHeight(ground.zScaleAt(t)) - Noise;
    }
    return heights;
}

// Heights of the control points.
std::vector<double> heightsOf(const TrackLine &line, const Plan &plan,
                              const SceneryDocument &document,
                              const SceneryGround &ground, const SceneryWorld &world,
                              const TrackPathOptions &options, bool isTrack)
{
    const GroundUnder under(ground.picture, document.parameters, options.frames,
                            plan.spline, plan.x, plan.y);
    const int places = PlacesOfAFrame * options.frames + 1;
    const double clearance = options.clearance.value_or(options.usualClearance);
    std::vector<double> floors = floorsAbove(under, world, clearance, places);
    const std::vector<double> net = plan.spline.fitted(
        isTrack ? trackHeights(line, under, world, plan.spline.size()) : floors);
    if (isTrack && !options.clearance)
        std::fill(floors.begin(), floors.end(), -Farthest);
    return raisedTo(floors, plan.spline, net);
}

QStringList notesOn(const TrackLine &line)
{
    QStringList notes;
    if (line.cut > 0)
        notes << QObject::tr("%1 points of the track ahead of the terrain or behind it "
                             "were left out.")
                     .arg(line.cut);
    if (line.outside > 0)
        notes << QObject::tr("%1 points of the track lie outside of the terrain.")
                     .arg(line.outside);
    return notes;
}

TrackPath assembled(const Plan &plan, const std::vector<double> &z)
{
    TrackPath path;
    for (std::size_t i = 0; i < z.size(); ++i)
        path.controlPoints.append(
            ControlPoint(qint32(plan.x[i]), qint32(plan.y[i]),
                         qint32(std::clamp(z[i], -Farthest, Farthest)), 0.0));
    path.waypointLevel = levelFor(plan.spline.size());
    path.waypoints = waypointsAlong(plan, path.waypointLevel);
    // As the editors would leave them.
    updateStations(path.controlPoints);
    updatePlan(path.controlPoints, path.waypoints, path.waypointLevel);
    updateProfile(path.controlPoints, path.waypoints, path.waypointLevel);
    return path;
}

} // namespace

Result<TrackPath> pathAlong(const Track &track, const SceneryDocument &document,
                            const SceneryGround &ground, const TrackPathOptions &options,
                            Progress &progress)
{
    const auto world = SceneryWorld::of(document, ground);
    if (!world)
        return tl::unexpected(world.error());
    if (track.hasSystem && world->crs().isEmpty())
        return tl::unexpected(noSystem(ground));
    const auto line = lineOfTrack(track, *world, ground.picture);
    if (!line)
        return tl::unexpected(line.error());
    if (options.heights == PathHeights::Track && !line->hasHeights)
        return failed(QObject::tr("The track has no heights; those of the ground can be "
                                  "taken."));
    const bool isTrack = line->hasHeights && options.heights != PathHeights::Ground;
    const int most = std::clamp(options.points, TrackPathOptions::FewestPoints,
                                TrackPathOptions::MostPoints);
    const auto plan = bestPlan(*line, most, progress);
    if (!plan)
        return tl::unexpected(plan.error());
    const std::vector<double> z =
        heightsOf(*line, *plan, document, ground, *world, options, isTrack);
    if (std::any_of(z.begin(), z.end(),
                    [](double height) { return std::fabs(height) > Farthest; }))
        return failed(QObject::tr("The heights of the path would be beyond %1 units.")
                          .arg(qint64(Farthest)));
    TrackPath path = assembled(*plan, z);
    path.frames = options.frames;
    path.hasTrackHeights = isTrack;
    path.greatestDistance = PlanDistance(*plan, world->metresX(), world->metresY())
                                .greatest(*line, std::numeric_limits<double>::infinity());
    path.notes = notesOn(*line);
    if (!progress.step(1, 1))
        return stopped();
    return path;
}

void flyAlong(SceneryDocument &document, const TrackPath &path)
{
    document.controlPoints = path.controlPoints;
    document.waypoints = path.waypoints;
    document.waypointLevel = path.waypointLevel;
    SceneryData &data = document.parameters;
    data.isStraight = false;
    data.Bildanzahl = path.frames;
    data.StartbildNr = 0;
    data.EndbildNr = path.frames - 1;
    // The path has heights of its own.
    document.extras.FollowGround = false;
}
