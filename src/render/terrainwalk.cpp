// The walks over the mesh.

#include "base/progress.h"
#include "render/meshframe.h"
#include "render/meshmargin.h"
#include "render/terrainsweep.h"

#include <utility>

namespace {

// Cells of a row, should a step of next to nothing make more than a mesh has.
constexpr int MostCells = 1 << 20;

} // namespace

bool TerrainSweep::mayStartRow() { return m_progress->step(m_row++, 0); }

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

void TerrainSweep::walkSouth(MeshColumns columns, First first, double from, double until)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y >= until; y -= m_limits.stepY) {
        if (!mayStartRow())
            return;
        m_frame->addRow(y);
    }
}

void TerrainSweep::walkNorth(MeshColumns columns, First first, double from, double until)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    // NOLINTNEXTLINE(*FloatLoopCounter): rows advance by repeated addition
    for (double y = from; y < until; y += m_limits.stepY) {
        if (!mayStartRow())
            return;
        m_frame->addRow(y);
    }
}

void TerrainSweep::walkOneRow(MeshColumns columns, First first, double y)
{
    columns.northWestFirst = first == First::NorthWest;
    m_frame->beginWalk(std::move(columns));
    if (mayStartRow())
        m_frame->addRow(y);
}

void TerrainSweep::ScanQuadrant0()
{
    if (m_limits.quadrantRuns(0))
        walkSouth(eastward(m_limits.loX[0], m_limits.hiX[0] + MeshMargin),
                  First::NorthWest, m_limits.hiY[0], m_limits.loY[0] - MeshMargin);
}

void TerrainSweep::ScanQuadrant1()
{
    if (m_limits.quadrantRuns(1))
        walkSouth(westward(m_limits.hiX[1], m_limits.loX[1] - MeshMargin),
                  First::SouthEast, m_limits.hiY[1], m_limits.loY[1] - MeshMargin);
}

void TerrainSweep::ScanQuadrant2()
{
    if (m_limits.quadrantRuns(2))
        walkNorth(westward(m_limits.hiX[2], m_limits.loX[2] - MeshMargin),
                  First::SouthEast, m_limits.loY[2], m_limits.hiY[2] + MeshMargin);
}

void TerrainSweep::ScanQuadrant3()
{
    if (m_limits.quadrantRuns(3))
        walkNorth(eastward(m_limits.loX[3], m_limits.hiX[3] + MeshMargin),
                  First::NorthWest, m_limits.loY[3], m_limits.hiY[3] + MeshMargin);
}

void TerrainSweep::ScanBoundary01()
{
    if (m_limits.quadrantRuns(0) && m_limits.quadrantRuns(1))
        walkSouth(
            MeshColumns::eastward(m_limits.hiX[0] + m_limits.stepX, m_limits.stepX, 1),
            First::NorthWest, m_limits.hiY[0], m_limits.loY[0] - MeshMargin);
}

void TerrainSweep::ScanBoundary12()
{
    if (m_limits.quadrantRuns(1) && m_limits.quadrantRuns(2))
        walkOneRow(westward(m_limits.hiX[1], m_limits.loX[1] - MeshMargin),
                   First::SouthEast, m_limits.loY[1] - m_limits.stepY);
}

void TerrainSweep::ScanBoundary23()
{
    if (m_limits.quadrantRuns(2) && m_limits.quadrantRuns(3))
        walkNorth(
            MeshColumns::eastward(m_limits.loX[2] - m_limits.stepX, m_limits.stepX, 1),
            First::SouthEast, m_limits.loY[2], m_limits.hiY[2] + MeshMargin);
}

void TerrainSweep::ScanBoundary30()
{
    // The last cell is the one under the observer.
    if (m_limits.quadrantRuns(3) && m_limits.quadrantRuns(0))
        walkOneRow(
            eastward(m_limits.loX[3], m_limits.hiX[3] + m_limits.stepX + MeshMargin),
            First::NorthWest, m_limits.hiY[3] + m_limits.stepY);
}
