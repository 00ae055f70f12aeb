#include "live/livelevels.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

// A quarter as wide as the view at least.
constexpr std::array Levels{LiveLevel{0.25, 0.125}, LiveLevel{0.25, 0.25},
                            LiveLevel{0.375, 0.25}, LiveLevel{0.5, 0.25},
                            LiveLevel{0.5, 0.375},  LiveLevel{0.625, 0.5},
                            LiveLevel{0.75, 0.5},   LiveLevel{1.0, 0.5},
                            LiveLevel{1.0, 0.75},   LiveLevel{1.0, 1.0}};
// A picture that took longer than the last ones counts at once, one that took less bit by
// bit: a pause of the machine is sooner forgotten than a fast picture believed.
constexpr double ShareOfFaster = 0.25;
constexpr double ShareOfSlower = 0.5;

} // namespace

std::span<const LiveLevel> LiveLevels::all() { return Levels; }

double LiveLevels::work(const LiveLevel &level, QSize full, QSize mesh)
{
    const double pixels = double(full.width()) * full.height() * level.size * level.size;
    const double cells = double(mesh.width()) * mesh.height() * level.mesh * level.mesh;
    return pixels + cells;
}

void LiveLevels::took(double work, double seconds)
{
    if (work <= 0.0)
        return;
    const double measured = seconds / work;
    if (m_secondsAWork == 0.0) {
        m_secondsAWork = measured;
        return;
    }
    const double share = measured < m_secondsAWork ? ShareOfFaster : ShareOfSlower;
    m_secondsAWork += share * (measured - m_secondsAWork);
}

const LiveLevel &LiveLevels::within(double seconds, QSize full, QSize mesh) const
{
    if (m_secondsAWork == 0.0)
        return Levels.front();
    const auto fits = [&](const LiveLevel &level) {
        return secondsFor(work(level, full, mesh)) <= seconds;
    };
    const auto finest = std::find_if(Levels.rbegin(), Levels.rend(), fits);
    return finest == Levels.rend() ? Levels.front() : *finest;
}
