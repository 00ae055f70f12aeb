#include "render/meshframe.h"

#include "base/workerpool.h"
#include "raster/textureimage.h"
#include "render/transformation.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

namespace {

// Cells that are drawn at a time: enough to keep threads busy, few enough for a window
// that stays alive meanwhile.
constexpr std::size_t MostCellsAtATime = 32768;
constexpr std::size_t FirstCellsAtATime = 8192;
constexpr double ShortTime = 0.005; // seconds
constexpr double LongTime = 0.015;
constexpr std::size_t RowsAtATime = 512;
// Seconds of colouring after which it is not put off any longer.
constexpr double LongColouring = 0.02;
// What the colour of a pixel takes on one thread, before it was measured.
constexpr double FirstSecondsAPixel = 1e-7;
constexpr int ColourPiecesAThread = 8;
constexpr int LeastRowsAPiece = 16;

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

MeshFrame::MeshFrame(WorkerPool &workers)
    : m_pool(workers), m_workers(workers.size()), m_lists(workers.size()),
      m_cellsAtATime(FirstCellsAtATime),
      m_secondsAPixel(FirstSecondsAPixel / workers.size())
{
}

void MeshFrame::begin(const MeshSetup &setup)
{
    m_setup = setup;
    if (setup.nearFirst) {
        m_covered.begin(setup.target->size());
        for (PaintLists &lists : m_lists)
            lists.beginPicture(setup.target->width(), setup.target->height());
    }
    for (Worker &worker : m_workers) {
        worker.trigon.reset();
        worker.nearTrigon.reset();
        if (setup.nearFirst)
            worker.nearTrigon.emplace(setup.target, setup.texture, setup.light,
                                      setup.camera, setup.quality, &m_covered);
        else
            worker.trigon.emplace(setup.target, setup.texture, setup.light, setup.camera,
                                  setup.quality);
        worker.builder.reset();
    }
    m_reach = RowReach(*setup.camera, {setup.target->width(), setup.target->height()},
                       setup.heights);
    m_pending.clear();
    m_triangles.begin(setup.mostCells,
                      Dust(setup.observer, setup.dustRange, setup.heights));
    m_store.reclaim();
    m_mostNumbers = 0;
    m_paintedRows = {};
}

void MeshFrame::beginWalk(MeshColumns columns)
{
    drawPending();
    for (Worker &worker : m_workers)
        worker.builder.reset();
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

void MeshFrame::drawPending()
{
    if (m_pending.empty())
        return;
    const auto start = Clock::now();
    if (!m_triangles.hasRoomFor(m_pending.size(), m_columns->cells))
        colourNumbers();
    drawRows(m_triangles.append(m_pending.size(), *m_columns));
    m_pending.clear();

    qint64 painted = 0;
    if (m_setup.nearFirst)
        forgetRows();
    else
        for (Worker &worker : m_workers)
            painted += worker.trigon->takePainted();
    m_mostNumbers += painted;
    const double colouring = static_cast<double>(painted) * m_secondsAPixel;
    const double taken = secondsSince(start) + colouring;
    if (taken > LongTime)
        m_cellsAtATime = std::max<std::size_t>(m_cellsAtATime / 2, 1);
    else if (taken < ShortTime)
        m_cellsAtATime = std::min(m_cellsAtATime * 2, MostCellsAtATime);
    colourWhatTakesLong();
}

void MeshFrame::drawRows(std::size_t firstRow)
{
    const int pieces = freeThreads();
    m_pool.runPieces(pieces, [&](int worker, int piece) {
        computeRows(m_workers[worker], piece, pieces, firstRow);
    });
    m_pool.runPieces(pieces, [&](int worker, int piece) {
        paintShare(m_workers[worker], {piece, pieces});
    });
    for (int piece = 0; piece < pieces; ++piece)
        m_paintedRows.unite(m_lists[piece].rows());
}

// Rows that follow each other share points, so a piece is made of those.
void MeshFrame::computeRows(Worker &worker, int piece, int pieces, std::size_t firstRow)
{
    PaintLists &lists = m_lists[piece];
    const int width = m_setup.target->width();
    const int height = m_setup.target->height();
    if (pieces > 1) {
        lists.begin(width, height, pieces);
    } else if (worker.nearTrigon) {
        worker.nearTrigon->setShare({});
        lists.begin(width, height, *worker.nearTrigon, m_triangles);
    } else {
        worker.trigon->setShare({});
        lists.begin(width, height, *worker.trigon);
    }
    if (worker.nearTrigon)
        lists.passOver(m_covered);
    const auto rowsBefore = [&](int k) {
        return m_pending.size() * std::size_t(k) / std::size_t(pieces);
    };
    const std::size_t from = rowsBefore(piece);
    const std::size_t to = rowsBefore(piece + 1);
    if (from == to)
        return;
    if (!worker.builder)
        worker.builder.emplace(m_columns, *m_setup.elevation, *m_setup.camera, m_reach,
                               m_setup.stepY, m_store);
    for (std::size_t k = from; k < to; ++k) {
        MeshRow row = worker.builder->build(m_pending[k]);
        m_triangles.put(firstRow + k, std::move(row), *worker.builder, m_setup.nearFirst,
                        lists);
    }
}

void MeshFrame::paintShare(Worker &worker, RowShare share) const
{
    const auto overList = [&](const auto &paint) {
        for (int piece = 0; piece < share.count; ++piece)
            for (const auto &[x, row, number] : m_lists[piece].of(share.index))
                paint({x[0], row[0]}, {x[1], row[1]}, {x[2], row[2]}, number);
    };
    using Corner = const ScreenCorner &;
    if (worker.nearTrigon) {
        worker.nearTrigon->setShare(share);
        overList([&](Corner a, Corner b, Corner c, unsigned int number) {
            worker.nearTrigon->paint(a, b, c, boxAround(a, b, c), number, m_triangles);
        });
        worker.nearTrigon->flush();
    } else {
        worker.trigon->setShare(share);
        overList([&](Corner a, Corner b, Corner c, unsigned int number) {
            worker.trigon->Rechnen(a, b, c, number);
        });
    }
}

// Their pixels have got their colours.
void MeshFrame::forgetRows()
{
    m_triangles.clear();
    m_store.reclaim();
    m_paintedRows = {};
}

// Two threads on one core would hold up all others at the end of each piece of work.
int MeshFrame::freeThreads() const
{
    const int taken = m_setup.coresTaken ? m_setup.coresTaken() : 0;
    return std::max(m_pool.size() - taken, 1);
}

void MeshFrame::overPaintedRows(const std::function<void(ScreenTrigon &, RowRange)> &work)
{
    const int threads = m_pool.size();
    const int pieces = threads == 1 ? 1 : ColourPiecesAThread * threads;
    const int rows = std::max(m_paintedRows.count() / pieces + 1, LeastRowsAPiece);
    m_pool.runPieces(m_paintedRows.count() / rows + 1, [&](int worker, int piece) {
        const int first = m_paintedRows.first + piece * rows;
        const int last = std::min(first + rows - 1, m_paintedRows.last);
        work(*m_workers[worker].trigon, {first, last});
    });
}

void MeshFrame::colourNumbers()
{
    if (m_triangles.isEmpty())
        return;
    overPaintedRows([this](ScreenTrigon &trigon, RowRange rows) {
        trigon.resolve(m_triangles, rows);
    });
    forgetRows();
    m_mostNumbers = 0;
}

// Colours the picture if that has come to take long: somebody who stops the frame waits
// for it. What is painted over later was then coloured for nothing, so the pixels are
// counted before it is believed that they are many.
void MeshFrame::colourWhatTakesLong()
{
    const auto takesLong = [this] {
        return static_cast<double>(m_mostNumbers) * m_secondsAPixel > LongColouring;
    };
    if (!takesLong())
        return;
    std::atomic<qint64> numbers = 0;
    overPaintedRows([&numbers](const ScreenTrigon &trigon, RowRange rows) {
        numbers += trigon.countNumbers(rows);
    });
    m_mostNumbers = numbers;
    if (!takesLong())
        return;
    const auto start = Clock::now();
    const auto coloured = static_cast<double>(m_mostNumbers);
    colourNumbers();
    m_secondsAPixel = std::clamp(secondsSince(start) / coloured, 1e-9, 1e-6);
}
