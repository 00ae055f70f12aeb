#include "geodata/gridreader.h"

#include "base/memorybudget.h"
#include "geodata/pieces.h"
#include "geodata/sheetreader.h"
#include "geodata/warpworker.h"
#include "terrain/abandonable.h"

#include <QObject>

#include <algorithm>
#include <new>

namespace {

// Windows of a sheet that hold the wanted cells, row by row of windows.
class CellsWorker final : public PieceWorker {
public:
    CellsWorker(std::unique_ptr<SheetReader> reader, const QRect &cells,
                const QSize &window, Heights &heights)
        : m_reader(std::move(reader)), m_cells(cells), m_window(window),
          m_heights(heights)
    {
    }
    [[nodiscard]] Result<bool> work(int piece, PieceWatch &watch) override
    {
        // Counted from the sheet's corner, so that blocks are read once.
        const int top = (m_cells.top() / m_window.height() + piece) * m_window.height();
        const QRect band =
            QRect(m_cells.left(), top, m_cells.width(), m_window.height()) & m_cells;
        for (int x = 0; x < band.width(); x += m_window.width()) {
            if (!watch.mayGoOn())
                return stopped();
            const QRect part = band & QRect(band.left() + x, band.top(), m_window.width(),
                                            band.height());
            float *const to = m_heights.row(band.top() - m_cells.top()) + x;
            Result<bool> done =
                m_reader->read(part, to, std::size_t(m_heights.size.width()));
            if (!done)
                return done;
        }
        return true;
    }

private:
    std::unique_ptr<SheetReader> m_reader;
    QRect m_cells;
    QSize m_window;
    Heights &m_heights;
};

Result<bool> readCells(const Sheet &sheet, const QRect &cells, Heights &heights,
                       Progress &progress)
{
    const QSize window = windowOf(sheet);
    const auto make = [&]() -> Result<std::unique_ptr<PieceWorker>> {
        Result<std::unique_ptr<SheetReader>> reader = SheetReader::open(sheet);
        if (!reader)
            return tl::unexpected(reader.error());
        return std::make_unique<CellsWorker>(std::move(*reader), cells, window, heights);
    };
    const int pieces =
        cells.bottom() / window.height() - cells.top() / window.height() + 1;
    return workOnPieces(pieces, make, progress);
}

Result<bool> warpCells(const Mosaic &mosaic, const OutputGrid &grid, Heights &heights,
                       Progress &progress)
{
    const Result<WarpTiles> tiles = warpTiles(mosaic, grid, progress);
    if (!tiles)
        return tl::unexpected(tiles.error());
    const auto make = [&] { return makeWarpWorker(mosaic, grid, *tiles, heights); };
    return workOnPieces(tiles->rows(), make, progress);
}

// To clear much memory takes long.
Result<Heights> emptyHeights(const QSize &size, Progress &progress)
{
    if (!progress.step(0, 1))
        return stopped();
    auto made = runAbandonable<Result<Heights>>(
        [size](AbandonableState &) { return std::optional(emptyHeights(size)); }, 1,
        progress);
    if (!made)
        return tl::unexpected(made.error());
    return std::move(*made);
}

} // namespace

Result<Heights> emptyHeights(const QSize &size)
{
    const qint64 bytes = qint64(size.width()) * size.height() * qint64(sizeof(float));
    const auto refuse = [&] {
        return failed(QObject::tr("A terrain of %1 x %2 cells would take %3 of memory, "
                                  "which is not there.")
                          .arg(size.width())
                          .arg(size.height())
                          .arg(memoryText(bytes)));
    };
    if (!fitsMemory(bytes))
        return refuse();
    try {
        Heights heights{size, {}};
        heights.metres.resize(std::size_t(size.width()) * std::size_t(size.height()));
        return heights;
    } catch (const std::bad_alloc &) {
        return refuse();
    }
}

Result<Heights> readHeights(const Mosaic &mosaic, const OutputGrid &grid,
                            Progress &progress)
{
    Result<Heights> heights = emptyHeights(grid.size, progress);
    if (!heights)
        return heights;
    Result<bool> done =
        grid.cells ? readCells(mosaic.sheets.front(), *grid.cells, *heights, progress)
                   : warpCells(mosaic, grid, *heights, progress);
    if (!done)
        return tl::unexpected(done.error());
    return heights;
}
