#include "geodata/overview.h"

#include "geodata/gridreader.h"
#include "geodata/pieces.h"
#include "geodata/sheetreader.h"
#include "geodata/warp.h"

#include <QObject>

#include <algorithm>
#include <cmath>

namespace {

// Rows of an overview that are read and told of at once.
constexpr int RowsAtATime = 4;
constexpr int MostRowsAtATime = 64;

QSize shrunk(const QSize &whole, const QSize &most)
{
    const double share = std::min({1.0, static_cast<double>(most.width()) / whole.width(),
                                   static_cast<double>(most.height()) / whole.height()});
    const auto side = [share](int cells) {
        return std::max(static_cast<int>(std::lround(cells * share)), 1);
    };
    return {side(whole.width()), side(whole.height())};
}

// Where the pieces begin in which an overview is read, the end last: a piece is made of
// the rows that the file keeps together, so that none is read twice.
std::vector<int> beginsOf(const SheetReader &reader, const QSize &size)
{
    const auto [rows, together] = reader.rowsFor(size);
    const double step = static_cast<double>(rows) / size.height();
    std::vector<int> begins;
    for (int y = 0; y < size.height();) {
        begins.push_back(y);
        const int block = static_cast<int>((y + 0.5) * step) / together;
        int end = y + 1;
        while (end < size.height() && end - y < MostRowsAtATime &&
               (end - y < RowsAtATime ||
                static_cast<int>((end + 0.5) * step) / together == block))
            ++end;
        y = end;
    }
    begins.push_back(size.height());
    return begins;
}

// Tells of rows on the caller's thread, in their order.
class RowTeller final : public Progress {
public:
    RowTeller(const Heights &overview, const std::vector<int> &begins,
              const Terrain::RowsReady &ready)
        : m_overview(overview), m_begins(begins), m_ready(ready),
          m_done(begins.size() - 1)
    {
    }
    void finish(int piece) { m_done[std::size_t(piece)] = true; }
    [[nodiscard]] bool step(qint64, qint64) override
    {
        std::size_t until = m_told;
        while (until < m_done.size() && m_done[until])
            ++until;
        const int from = m_begins[m_told];
        m_told = until;
        return m_ready(m_overview, from, m_begins[until]);
    }

private:
    const Heights &m_overview;
    const std::vector<int> &m_begins;
    const Terrain::RowsReady &m_ready;
    std::vector<std::atomic<bool>> m_done; // pieces that a thread has ended
    std::size_t m_told = 0;
};

class RowsWorker final : public PieceWorker {
public:
    RowsWorker(std::unique_ptr<SheetReader> reader, const std::vector<int> &begins,
               int columnsAtATime, Heights &overview, RowTeller &teller)
        : m_reader(std::move(reader)), m_begins(begins), m_columnsAtATime(columnsAtATime),
          m_overview(overview), m_teller(teller)
    {
    }
    [[nodiscard]] Result<bool> work(int piece, PieceWatch &watch) override
    {
        const int from = m_begins[std::size_t(piece)];
        const int rows = m_begins[std::size_t(piece) + 1] - from;
        const int width = m_overview.size.width();
        for (int x = 0; x < width; x += m_columnsAtATime) {
            if (!watch.mayGoOn())
                return stopped();
            const QRect part(x, from, std::min(m_columnsAtATime, width - x), rows);
            Result<bool> done = m_reader->readShrunk(
                m_overview.size, part, m_overview.row(from) + x, std::size_t(width));
            if (!done)
                return done;
        }
        m_teller.finish(piece);
        return true;
    }

private:
    std::unique_ptr<SheetReader> m_reader;
    const std::vector<int> &m_begins;
    int m_columnsAtATime;
    Heights &m_overview;
    RowTeller &m_teller;
};

Result<bool> readSheet(const Sheet &sheet, Heights &overview,
                       const Terrain::RowsReady &ready)
{
    const Result<std::unique_ptr<SheetReader>> first = SheetReader::open(sheet);
    if (!first)
        return tl::unexpected(first.error());
    const std::vector<int> begins = beginsOf(**first, overview.size);
    RowTeller teller(overview, begins, ready);
    // A window of the sheet's width is read at once.
    const double share = static_cast<double>(overview.size.width()) / sheet.size.width();
    const int columns = std::max(static_cast<int>(windowOf(sheet).width() * share), 1);
    const auto make = [&]() -> Result<std::unique_ptr<PieceWorker>> {
        Result<std::unique_ptr<SheetReader>> reader = SheetReader::open(sheet);
        if (!reader)
            return tl::unexpected(reader.error());
        return std::make_unique<RowsWorker>(std::move(*reader), begins, columns, overview,
                                            teller);
    };
    Result<bool> done = workOnPieces(static_cast<int>(begins.size()) - 1, make, teller);
    if (done && !teller.step(0, 0))
        return stopped();
    return done;
}

// A sheet of fewer cells, which takes the overviews of its files.
Result<Sheet> smallerSheet(const Sheet &sheet, double share)
{
    const auto side = [share](int cells) {
        return QString::number(std::max(std::lround(cells * share), 1L));
    };
    const GdalMessages messages;
    const Dataset smaller = translated(
        sheet.dataset.get(),
        {"-of", "VRT", "-outsize", side(sheet.size.width()), side(sheet.size.height())});
    if (!smaller)
        return failed(QObject::tr("Could not put the files together: %1.")
                          .arg(messages.reason(QObject::tr("GDAL refuses"))));
    Sheet made;
    made.virtualRaster = *GDALGetMetadata(smaller.get(), "xml:VRT");
    made.size = {GDALGetRasterXSize(smaller.get()), GDALGetRasterYSize(smaller.get())};
    made.crs = sheet.crs;
    made.isUpright = sheet.isUpright;
    made.rasters = sheet.rasters;
    GDALGetGeoTransform(smaller.get(), made.transform.data());
    Result<Dataset> dataset = openSheet(made);
    if (!dataset)
        return tl::unexpected(dataset.error());
    made.dataset = std::move(*dataset);
    return made;
}

class StopOnly final : public Progress {
public:
    StopOnly(const Heights &overview, const Terrain::RowsReady &ready)
        : m_overview(overview), m_ready(ready)
    {
    }
    [[nodiscard]] bool step(qint64, qint64) override { return m_ready(m_overview, 0, 0); }

private:
    const Heights &m_overview;
    const Terrain::RowsReady &m_ready;
};

Result<Heights> readSheets(const Mosaic &mosaic, OutputGrid grid, const QSize &size,
                           const Terrain::RowsReady &ready)
{
    const double share = static_cast<double>(size.width()) / grid.size.width();
    Mosaic smaller;
    for (const Sheet &sheet : mosaic.sheets) {
        Result<Sheet> made = smallerSheet(sheet, std::min(share, 1.0));
        if (!made)
            return tl::unexpected(made.error());
        smaller.layers.push_back(std::move(*made));
    }
    const Extent extent = grid.extent();
    grid.transform[1] = extent.width() / size.width();
    grid.transform[5] = -extent.height() / size.height();
    grid.size = size;
    grid.cells.reset();
    grid.resampling = Resampling::Nearest;
    const Heights nothing{size, {}};
    StopOnly watch(nothing, ready);
    Result<Heights> heights = readHeights(smaller, grid, watch);
    if (heights && !ready(*heights, 0, size.height()))
        return stopped();
    return heights;
}

} // namespace

Result<Heights> readOverview(const Mosaic &mosaic, const OutputGrid &whole,
                             const QSize &most, const Terrain::RowsReady &ready)
{
    if (mosaic.sheets.size() > 1)
        return readSheets(mosaic, whole, shrunk(whole.size, most), ready);
    const Sheet &sheet = mosaic.sheets.front();
    Result<Heights> overview = emptyHeights(shrunk(sheet.size, most));
    if (!overview)
        return overview;
    Result<bool> done = readSheet(sheet, *overview, ready);
    if (!done)
        return tl::unexpected(done.error());
    return overview;
}
