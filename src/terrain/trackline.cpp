#include "terrain/trackline.h"

#include <QObject>

#include <algorithm>
#include <cmath>

namespace {

// Of the whole line's size: closer ones are the jitter of a receiver that stands still.
constexpr double Jitter = 1.0 / 1000;

double distance(const LinePoint &a, const LinePoint &b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

// The last places of the world: its right column and upper row.
struct Bounds {
    double east;
    double north;

    [[nodiscard]] bool hold(const LinePoint &point) const
    {
        return point.x >= 0.0 && point.y >= 0.0 && point.x <= east && point.y <= north;
    }
};

Bounds boundsOf(const ElevationImage &ground)
{
    return {(ground.width() - 1) / ground.xScale(),
            (ground.height() - 1) / ground.yScale()};
}

LinePoint between(const LinePoint &a, const LinePoint &b, double share)
{
    const auto mixed = [share](double from, double to) {
        return from + share * (to - from);
    };
    return {mixed(a.x, b.x), mixed(a.y, b.y), mixed(a.metres, b.metres)};
}

// Where the way from a point outside to one inside crosses the edge, closely enough.
LinePoint crossing(const LinePoint &outside, const LinePoint &inside,
                   const Bounds &bounds)
{
    constexpr int Halvings = 40;
    double out = 0.0;
    double in = 1.0;
    for (int i = 0; i < Halvings; ++i) {
        const double middle = (out + in) / 2;
        (bounds.hold(between(outside, inside, middle)) ? in : out) = middle;
    }
    return between(outside, inside, in);
}

// Heights between those that are known; at the ends the nearest one.
bool fillHeights(std::vector<LinePoint> &points, const std::vector<bool> &isKnown)
{
    std::size_t last = points.size();
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!isKnown[i])
            continue;
        for (std::size_t k = last == points.size() ? 0 : last + 1; k < i; ++k) {
            const double share =
                last == points.size() ? 1.0 : double(k - last) / double(i - last);
            const double from = last == points.size() ? 0.0 : points[last].metres;
            points[k].metres = from + share * (points[i].metres - from);
        }
        last = i;
    }
    if (last == points.size())
        return false;
    for (std::size_t k = last + 1; k < points.size(); ++k)
        points[k].metres = points[last].metres;
    return true;
}

// Leaves out what lies ahead of the terrain and behind it.
void cutToTerrain(TrackLine &line, const Bounds &bounds)
{
    std::vector<LinePoint> &points = line.points;
    const auto isInside = [&](const LinePoint &point) { return bounds.hold(point); };
    const auto first = std::find_if(points.begin(), points.end(), isInside);
    if (first == points.end()) {
        line.cut = qint64(points.size());
        points.clear();
        return;
    }
    const auto behind = std::find_if(points.rbegin(), points.rend(), isInside).base();
    std::vector<LinePoint> kept;
    kept.reserve(std::size_t(behind - first) + 2);
    if (first != points.begin())
        kept.push_back(crossing(*(first - 1), *first, bounds));
    kept.insert(kept.end(), first, behind);
    if (behind != points.end())
        kept.push_back(crossing(*behind, *(behind - 1), bounds));
    line.cut = qint64(points.size()) - (behind - first);
    line.outside = (behind - first) - std::count_if(first, behind, isInside);
    points = std::move(kept);
}

double sizeOf(const std::vector<LinePoint> &points)
{
    const auto [west, east] = std::minmax_element(
        points.begin(), points.end(),
        [](const LinePoint &a, const LinePoint &b) { return a.x < b.x; });
    const auto [south, north] = std::minmax_element(
        points.begin(), points.end(),
        [](const LinePoint &a, const LinePoint &b) { return a.y < b.y; });
    return std::hypot(east->x - west->x, north->y - south->y);
}

void leaveOutJitter(TrackLine &line)
{
    line.all = line.points;
    if (line.all.empty())
        return;
    const double least = Jitter * sizeOf(line.all);
    line.points.assign(1, line.all.front());
    line.nearest.clear();
    line.nearest.reserve(line.all.size());
    for (const LinePoint &point : line.all) {
        if (distance(line.points.back(), point) > least)
            line.points.push_back(point);
        line.nearest.push_back(line.points.size() - 1);
    }
    // The line ends where the track does.
    if (line.points.size() > 1)
        line.points.back() = line.all.back();
}

} // namespace

Result<TrackLine> lineOfTrack(const Track &track, const SceneryWorld &world,
                              const ElevationImage &ground)
{
    TrackLine line;
    std::vector<bool> isKnown;
    line.points.reserve(std::size_t(track.points.size()));
    for (const TrackPoint &point : track.points) {
        const QPointF at = world.worldAt({point.x, point.y});
        if (!std::isfinite(at.x()) || !std::isfinite(at.y()))
            continue;
        line.points.push_back({at.x(), at.y(), point.metres.value_or(0.0)});
        isKnown.push_back(point.metres.has_value());
    }
    line.hasHeights = fillHeights(line.points, isKnown);
    const bool hadPoints = !line.points.empty();
    cutToTerrain(line, boundsOf(ground));
    if (line.points.empty() && hadPoints)
        return failed(QObject::tr("The track lies outside of the terrain."));
    leaveOutJitter(line);
    if (line.points.size() < 2)
        return failed(QObject::tr("The track stays at one place; a flight needs a way."));
    return line;
}

std::vector<LinePoint> evenly(const std::vector<LinePoint> &line, int count)
{
    double length = 0.0;
    for (std::size_t i = 1; i < line.size(); ++i)
        length += distance(line[i - 1], line[i]);
    std::vector<LinePoint> points;
    points.reserve(std::size_t(count));
    std::size_t next = 1;
    double start = 0.0; // of the way from next - 1 to next
    for (int i = 0; i < count - 1; ++i) {
        const double at = length * i / (count - 1);
        double way = distance(line[next - 1], line[next]);
        while (start + way < at && next + 1 < line.size()) {
            start += way;
            ++next;
            way = distance(line[next - 1], line[next]);
        }
        const double share = way > 0.0 ? std::clamp((at - start) / way, 0.0, 1.0) : 0.0;
        points.push_back(between(line[next - 1], line[next], share));
    }
    points.push_back(line.back());
    return points;
}
