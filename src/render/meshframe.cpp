#include "render/meshframe.h"

#include "raster/textureimage.h"
#include "render/transformation.h"
#include "render/workerpool.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

// Beyond this many dust ranges a cell is not drawn at all.
constexpr double FarthestRange = 7.0;
// Cells that are drawn at a time: enough to keep threads busy, few enough for a window
// that stays alive meanwhile.
constexpr std::size_t MostCellsAtATime = 32768;
constexpr std::size_t FirstCellsAtATime = 8192;
constexpr std::chrono::milliseconds ShortTime(5);
constexpr std::chrono::milliseconds LongTime(15);
constexpr std::size_t RowsAtATime = 512;
// Bytes of mesh rows that are kept before their pixels get their colours.
constexpr std::size_t MostKeptBytes = std::size_t(24) << 20;

} // namespace

MeshFrame::MeshFrame(const FrameSetup &setup, WorkerPool &workers)
    : m_setup(setup), m_workers(workers), m_cellsAtATime(FirstCellsAtATime)
{
    for (int worker = 0; worker < workers.size(); ++worker)
        m_trigons.emplace_back(setup.target, setup.texture, setup.light, setup.camera,
                               setup.quality, RowShare{worker, workers.size()});
    m_stride = 2 * static_cast<unsigned int>(std::max(setup.mostCells, 1));
    // A little less than the limit, for the rounding of the exact test.
    const double farthest = FarthestRange * setup.dustRange * (1 - 1e-9);
    m_surelyNear = setup.dustRange > 0.0 ? farthest * farthest : -1.0;
}

void MeshFrame::beginWalk(MeshColumns columns)
{
    drawPending();
    m_builders.clear();
    m_columns = std::make_shared<const MeshColumns>(std::move(columns));
}

void MeshFrame::addRow(double y)
{
    if (m_columns->cells < 1)
        return;
    m_pending.push_back(y);
    const std::size_t cells = m_pending.size() * std::size_t(m_columns->cells);
    if (cells >= m_cellsAtATime || m_pending.size() >= RowsAtATime)
        drawPending();
}

void MeshFrame::resolve()
{
    drawPending();
    colourNumbers();
}

void MeshFrame::colourNumbers()
{
    if (m_rows.empty())
        return;
    m_workers.run([this](int worker) { m_trigons[worker].resolve(*this); });
    m_rows.clear();
    m_keptBytes = 0;
}

void MeshFrame::drawPending()
{
    if (m_pending.empty())
        return;
    // One stride for all rows whose numbers are in the target.
    const unsigned int wanted = 2 * static_cast<unsigned int>(m_columns->cells);
    const std::size_t rows = m_rows.size() + m_pending.size();
    if (wanted > m_stride || m_keptBytes > MostKeptBytes ||
        (rows + 1) * m_stride >= ScreenTrigon::NumberLimit) {
        colourNumbers();
        m_stride = std::max(m_stride, wanted);
    }
    const std::size_t first = m_rows.size();
    m_rows.resize(first + m_pending.size());
    drawRows(first);
    const std::size_t pointRows = m_columns->agree ? 1 : 2; // shared, or one each
    m_keptBytes += m_pending.size() * pointRows * PointRow::bytes(m_columns->cells + 1);
    m_pending.clear();
}

void MeshFrame::drawRows(std::size_t firstRow)
{
    const auto start = std::chrono::steady_clock::now();
    m_builders.resize(m_workers.size());
    m_workers.run([&](int worker) { computeRows(worker, firstRow); });
    m_workers.run([&](int worker) { paintRows(m_trigons[worker], firstRow); });
    for (std::size_t r = firstRow; r < m_rows.size(); ++r)
        m_rows[r].drawable = {};
    const auto taken = std::chrono::steady_clock::now() - start;
    if (taken > LongTime)
        m_cellsAtATime = std::max<std::size_t>(m_cellsAtATime / 2, 1);
    else if (taken < ShortTime)
        m_cellsAtATime = std::min(m_cellsAtATime * 2, MostCellsAtATime);
}

// Each thread computes some rows that follow each other, since they share points.
void MeshFrame::computeRows(int worker, std::size_t firstRow)
{
    const std::size_t count = m_pending.size();
    const auto threads = static_cast<std::size_t>(m_workers.size());
    const auto from = count * static_cast<std::size_t>(worker) / threads;
    const auto to = count * (static_cast<std::size_t>(worker) + 1) / threads;
    if (from == to)
        return;
    auto &builder = m_builders[worker];
    if (!builder)
        builder = std::make_unique<MeshRowBuilder>(m_columns, *m_setup.elevation,
                                                   *m_setup.camera, m_setup.stepY);
    for (std::size_t k = from; k < to; ++k)
        m_rows[firstRow + k] = builder->build(m_pending[k]);
}

void MeshFrame::paintRows(ScreenTrigon &trigon, std::size_t firstRow) const
{
    for (std::size_t r = firstRow; r < m_rows.size(); ++r) {
        const MeshRow &row = m_rows[r];
        const auto number = static_cast<unsigned int>(r) * m_stride;
        const int cells = row.columns->cells;
        for (int k = 0; k < cells; ++k) {
            const int cell = row.columns->westward ? cells - 1 - k : k;
            if (row.drawable[cell])
                paintCell(trigon, row, cell,
                          number + 2 * static_cast<unsigned int>(cell));
        }
    }
}

void MeshFrame::paintCell(ScreenTrigon &trigon, const MeshRow &row, int cell,
                          unsigned int number) const
{
    const PointRow &south = *row.south;
    const PointRow &north = *row.north;
    if (isLostInDust(row.columns->inner[cell + 1], south.y, south.z[cell]))
        return;
    const auto corner = [](const PointRow &points, int k) {
        return ScreenCorner{points.column[k], points.row[k]};
    };
    const ScreenCorner southWest = corner(south, cell);
    const ScreenCorner northEast = corner(north, cell + 1);
    const int first = row.columns->northWestFirst ? 0 : 1;
    for (int k = 0; k < 2; ++k) {
        if (k != first) {
            if (row.drawable[cell] & MeshRow::SouthEast)
                trigon.Rechnen(southWest, northEast, corner(south, cell + 1), number + 1);
        } else if (row.drawable[cell] & MeshRow::NorthWest) {
            trigon.Rechnen(southWest, corner(north, cell), northEast, number);
        }
    }
}

double MeshFrame::distance(double x, double y, double z) const
{
    const double dx = m_setup.observer.x - x;
    const double dy = m_setup.observer.y - y;
    const double dz = m_setup.observer.z - z;
    return std::sqrt(dx * dx + dy * dy + dz * dz) / m_setup.dustRange;
}

bool MeshFrame::isLostInDust(double x, double y, double z) const
{
    const double dx = m_setup.observer.x - x;
    const double dy = m_setup.observer.y - y;
    const double dz = m_setup.observer.z - z;
    return !(dx * dx + dy * dy + dz * dz < m_surelyNear) &&
           distance(x, y, z) >= FarthestRange;
}

Triangle MeshFrame::triangle(unsigned int number) const
{
    const MeshRow &row = m_rows[number / m_stride];
    const unsigned int inRow = number % m_stride;
    const auto cell = static_cast<int>(inRow / 2);
    const double *const x = row.columns->inner.data() + 1;
    Triangle triangle;
    const auto set = [&](int k, const PointRow &points, int column) {
        triangle.screen[k] = {points.column[column], points.row[column]};
        triangle.vertices[k] = {x[column], points.y, points.z[column], 1.0};
        triangle.normals[k] = points.normal(column);
    };
    set(0, *row.south, cell);
    if (inRow % 2 == 0) {
        set(1, *row.north, cell);
        set(2, *row.north, cell + 1);
    } else {
        set(1, *row.north, cell + 1);
        set(2, *row.south, cell + 1);
    }
    // The same dust for both triangles of a cell.
    triangle.fog = 1 - std::exp(-distance(x[cell], row.south->y, row.south->z[cell]));
    return triangle;
}
