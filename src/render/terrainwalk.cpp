// The walks over the mesh: all are planned, so that their rows can be counted, then
// walked.

#include "base/progress.h"
#include "render/meshframe.h"
#include "render/meshmargin.h"
#include "render/terrainsweep.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace {

// Cells of a row, and rows of a walk, should a step of next to nothing make more than a
// mesh has.
constexpr int MostCells = 1 << 20;

} // namespace

MeshColumns TerrainSweep::eastward(double from, double until) const
{
    int cells = 0;
    for (double x = from; x < until && cells < MostCells; x += m_limits.stepX)
        ++cells;
    return MeshColumns::eastward(from, m_limits.stepX, cells);
}

MeshColumns TerrainSweep::westward(double from, double until) const
{
    int cells = 0;
    for (double x = from; x >= until && cells < MostCells; x -= m_limits.stepX)
        ++cells;
    return MeshColumns::westwardFrom(from, m_limits.stepX, cells);
}

void TerrainSweep::planSouth(MeshColumns columns, First first, double from, double until)
{
    int rows = 0;
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y >= until && rows < MostCells; y -= m_limits.stepY)
        ++rows;
    columns.northWestFirst = first == First::NorthWest;
    m_walks.push_back({std::move(columns), from, -m_limits.stepY, rows});
}

void TerrainSweep::planNorth(MeshColumns columns, First first, double from, double until)
{
    int rows = 0;
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y < until && rows < MostCells; y += m_limits.stepY)
        ++rows;
    columns.northWestFirst = first == First::NorthWest;
    m_walks.push_back({std::move(columns), from, m_limits.stepY, rows});
}

void TerrainSweep::planOneRow(MeshColumns columns, First first, double y)
{
    columns.northWestFirst = first == First::NorthWest;
    m_walks.push_back({std::move(columns), y, 0.0, 1});
}

void TerrainSweep::planWalks()
{
    m_walks.clear();
    ScanQuadrant0();
    ScanQuadrant1();
    ScanQuadrant2();
    ScanQuadrant3();
    ScanBoundary01();
    ScanBoundary12();
    ScanBoundary23();
    ScanBoundary30();
}

void TerrainSweep::walkAll()
{
    const qint64 rows =
        std::accumulate(m_walks.begin(), m_walks.end(), qint64(0),
                        [](qint64 sum, const Walk &walk) { return sum + walk.rows; });
    if (m_setup->seenWholeOnly)
        std::reverse(m_walks.begin(), m_walks.end());
    qint64 begun = 0;
    std::vector<double> places; // of the rows of a walk
    for (Walk &walk : m_walks) {
        m_frame->beginWalk(std::move(walk.columns));
        places.resize(walk.rows);
        double y = walk.from;
        for (double &place : places) {
            place = y;
            y += walk.step;
        }
        if (m_setup->seenWholeOnly)
            std::reverse(places.begin(), places.end());
        for (const double place : places) {
            if (!m_progress->step(begun++, rows))
                break;
            m_frame->addRow(place);
        }
    }
}

void TerrainSweep::ScanQuadrant0()
{
    if (m_limits.quadrantRuns(0))
        planSouth(eastward(m_limits.loX[0], m_limits.hiX[0] + MeshMargin),
                  First::NorthWest, m_limits.hiY[0], m_limits.loY[0] - MeshMargin);
}

void TerrainSweep::ScanQuadrant1()
{
    if (m_limits.quadrantRuns(1))
        planSouth(westward(m_limits.hiX[1], m_limits.loX[1] - MeshMargin),
                  First::SouthEast, m_limits.hiY[1], m_limits.loY[1] - MeshMargin);
}

void TerrainSweep::ScanQuadrant2()
{
    if (m_limits.quadrantRuns(2))
        planNorth(westward(m_limits.hiX[2], m_limits.loX[2] - MeshMargin),
                  First::SouthEast, m_limits.loY[2], m_limits.hiY[2] + MeshMargin);
}

void TerrainSweep::ScanQuadrant3()
{
    if (m_limits.quadrantRuns(3))
        planNorth(eastward(m_limits.loX[3], m_limits.hiX[3] + MeshMargin),
                  First::NorthWest, m_limits.loY[3], m_limits.hiY[3] + MeshMargin);
}

void TerrainSweep::ScanBoundary01()
{
    if (m_limits.quadrantRuns(0) && m_limits.quadrantRuns(1))
        planSouth(
            MeshColumns::eastward(m_limits.hiX[0] + m_limits.stepX, m_limits.stepX, 1),
            First::NorthWest, m_limits.hiY[0], m_limits.loY[0] - MeshMargin);
}

void TerrainSweep::ScanBoundary12()
{
    if (m_limits.quadrantRuns(1) && m_limits.quadrantRuns(2))
        planOneRow(westward(m_limits.hiX[1], m_limits.loX[1] - MeshMargin),
                   First::SouthEast, m_limits.loY[1] - m_limits.stepY);
}

void TerrainSweep::ScanBoundary23()
{
    if (m_limits.quadrantRuns(2) && m_limits.quadrantRuns(3))
        planNorth(
            MeshColumns::eastward(m_limits.loX[2] - m_limits.stepX, m_limits.stepX, 1),
            First::SouthEast, m_limits.loY[2], m_limits.hiY[2] + MeshMargin);
}

void TerrainSweep::ScanBoundary30()
{
    // The last cell is the one under the observer.
    if (m_limits.quadrantRuns(3) && m_limits.quadrantRuns(0))
        planOneRow(
            eastward(m_limits.loX[3], m_limits.hiX[3] + m_limits.stepX + MeshMargin),
            First::NorthWest, m_limits.hiY[3] + m_limits.stepY);
}
