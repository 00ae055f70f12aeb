#include "geodata/census.h"

#include "geodata/pieces.h"
#include "geodata/sheetreader.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// What stands for a void by habit, in whole and in real numbers.
constexpr std::array<double, Census::Habits> HabitValues{
    -9999.0, -32767.0, -32768.0, -99999.0, -2147483648.0, -3.4028234663852886e38};
constexpr float Apart = 1000.0F; // of a void from every height
constexpr float Infinite = std::numeric_limits<float>::infinity();
constexpr int Lanes = 8;
constexpr int WindowSide = 512;
// Of the lattice of windows that are looked at in a huge sheet.
constexpr int SampleSide = 16;

struct RowFacts {
    float lowest = Infinite;
    float highest = -Infinite;
    std::size_t voids = 0;
};

// In lanes, which become vectors.
RowFacts factsOf(const float *metres, std::size_t count)
{
    std::array<float, Lanes> low{};
    std::array<float, Lanes> high{};
    std::array<std::uint32_t, Lanes> voids{};
    low.fill(Infinite);
    high.fill(-Infinite);
    std::size_t i = 0;
    for (; i + Lanes <= count; i += Lanes)
        for (std::size_t j = 0; j < Lanes; ++j) {
            const float value = metres[i + j];
            low[j] = value < low[j] ? value : low[j];
            high[j] = value > high[j] ? value : high[j];
            voids[j] += value != value ? 1U : 0U;
        }
    RowFacts facts;
    for (std::size_t j = 0; j < Lanes; ++j) {
        facts.lowest = std::min(facts.lowest, low[j]);
        facts.highest = std::max(facts.highest, high[j]);
        facts.voids += voids[j];
    }
    for (; i < count; ++i) {
        facts.lowest = metres[i] < facts.lowest ? metres[i] : facts.lowest;
        facts.highest = metres[i] > facts.highest ? metres[i] : facts.highest;
        facts.voids += std::isnan(metres[i]) ? 1 : 0;
    }
    return facts;
}

// The windows of a sheet that are looked at.
QList<QRect> windowsOf(const Sheet &sheet, bool all)
{
    const QSize window = windowOf(sheet);
    const int width = all ? window.width() : WindowSide;
    const int height = all ? window.height() : WindowSide;
    const int columns = (sheet.size.width() + width - 1) / width;
    const int rows = (sheet.size.height() + height - 1) / height;
    const int countX = all ? columns : std::min(columns, SampleSide);
    const int countY = all ? rows : std::min(rows, SampleSide);
    QList<QRect> windows;
    for (int y = 0; y < countY; ++y)
        for (int x = 0; x < countX; ++x) {
            const int column = static_cast<int>((2LL * x + 1) * columns / (2LL * countX));
            const int row = static_cast<int>((2LL * y + 1) * rows / (2LL * countY));
            windows.append(QRect(column * width, row * height, width, height) &
                           QRect(QPoint(), sheet.size));
        }
    return windows;
}

QList<QRect> quartersOf(const QRect &part)
{
    const QSize half((part.width() + 1) / 2, (part.height() + 1) / 2);
    QList<QRect> quarters;
    for (const int y : {0, half.height()})
        for (const int x : {0, half.width()})
            if (const QRect quarter = QRect(part.topLeft() + QPoint(x, y), half) & part;
                !quarter.isEmpty())
                quarters.append(quarter);
    return quarters;
}

class CensusWorker final : public PieceWorker {
public:
    CensusWorker(std::unique_ptr<SheetReader> reader, const QList<QRect> &windows,
                 std::vector<Census> &found)
        : m_reader(std::move(reader)), m_windows(windows), m_found(found)
    {
    }
    [[nodiscard]] Result<bool> work(int piece, PieceWatch &) override
    {
        const QRect &window = m_windows[piece];
        const std::size_t width = std::size_t(window.width());
        m_cells.resize(width * std::size_t(window.height()));
        Result<bool> done = m_reader->read(window, m_cells.data(), width);
        if (done)
            m_found[std::size_t(piece)].add(m_cells.data(), m_cells.size());
        return done;
    }

private:
    std::unique_ptr<SheetReader> m_reader;
    const QList<QRect> &m_windows;
    std::vector<Census> &m_found;
    std::vector<float> m_cells;
};

Result<Census> censusOf(const Sheet &sheet, const QList<QRect> &windows,
                        Progress &progress)
{
    const Census none(sheet.rasters.front());
    std::vector<Census> found(std::size_t(windows.size()), none);
    const auto make = [&]() -> Result<std::unique_ptr<PieceWorker>> {
        Result<std::unique_ptr<SheetReader>> reader = SheetReader::open(sheet);
        if (!reader)
            return tl::unexpected(reader.error());
        return std::make_unique<CensusWorker>(std::move(*reader), windows, found);
    };
    Result<bool> done = workOnPieces(static_cast<int>(windows.size()), make, progress);
    if (!done)
        return tl::unexpected(done.error());
    Census all = none;
    for (const Census &part : found)
        all.add(part);
    return all;
}

// Windows of a sheet of one file in which that says to hold cells, the first few of them;
// none where it does not know.
QList<QRect> heldWindows(const Sheet &sheet)
{
    constexpr int MostLooks = 10000;
    const GdalMessages messages;
    Result<Dataset> file = sheet.rasters.size() == 1
                               ? openRaster(sheet.rasters.front().name)
                               : Result<Dataset>(Dataset());
    if (!file || !*file)
        return {};
    GDALRasterBandH band = GDALGetRasterBand(file->get(), 1);
    QList<QRect> held;
    QList<QRect> open{QRect(QPoint(), sheet.size)};
    for (int i = 0; i < MostLooks && !open.isEmpty(); ++i) {
        const QRect part = open.takeLast();
        const int status = GDALGetDataCoverageStatus(
            band, part.x(), part.y(), part.width(), part.height(),
            GDAL_DATA_COVERAGE_STATUS_DATA, nullptr);
        if ((status & GDAL_DATA_COVERAGE_STATUS_UNIMPLEMENTED) != 0)
            return {};
        if ((status & GDAL_DATA_COVERAGE_STATUS_DATA) == 0)
            continue;
        if (std::max(part.width(), part.height()) > WindowSide)
            open += quartersOf(part);
        else
            held.append(part);
        if (held.size() >= SampleSide * SampleSide)
            break;
    }
    return held;
}

// More than voids, and than the zeros of what was never written.
bool tellsHeights(const Census &census)
{
    const auto range = census.range();
    return range && range->first < range->second;
}

} // namespace

Census::Census(const RasterFile &raster)
    : m_highestHabit(-Infinite), m_lowest(Infinite), m_highest(-Infinite)
{
    for (std::size_t i = 0; i < HabitValues.size(); ++i) {
        m_metres[i] = static_cast<float>(HabitValues[i] * raster.metresPerStep() +
                                         raster.metresAtZero());
        m_highestHabit = std::max(m_highestHabit, m_metres[i]);
    }
}

void Census::add(const float *metres, std::size_t count)
{
    constexpr std::size_t AtATime = 4096;
    for (std::size_t from = 0; from < count; from += AtATime) {
        const std::size_t part = std::min(AtATime, count - from);
        const RowFacts facts = factsOf(metres + from, part);
        m_voids += qint64(facts.voids);
        m_cells += qint64(part);
        if (facts.lowest <= m_highestHabit) {
            addSlowly(metres + from, part);
        } else {
            m_lowest = std::min(m_lowest, facts.lowest);
            m_highest = std::max(m_highest, facts.highest);
        }
    }
}

void Census::addSlowly(const float *metres, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto habit = std::find(m_metres.begin(), m_metres.end(), metres[i]);
        if (habit != m_metres.end()) {
            ++m_seen[std::size_t(habit - m_metres.begin())];
        } else {
            m_lowest = metres[i] < m_lowest ? metres[i] : m_lowest;
            m_highest = metres[i] > m_highest ? metres[i] : m_highest;
        }
    }
}

void Census::add(const Census &other)
{
    for (std::size_t i = 0; i < m_seen.size(); ++i)
        m_seen[i] += other.m_seen[i];
    m_lowest = std::min(m_lowest, other.m_lowest);
    m_highest = std::max(m_highest, other.m_highest);
    m_voids += other.m_voids;
    m_cells += other.m_cells;
}

std::optional<double> Census::takeUntoldVoid()
{
    // Others than the lowest may be heights; where there is no height all is void.
    for (std::size_t i = 0; i < m_seen.size(); ++i) {
        const bool isAlone = m_lowest - m_metres[i] >= Apart;
        if (m_seen[i] == 0 || !isAlone)
            continue;
        m_voids += m_seen[i];
        m_seen[i] = 0;
        return HabitValues[i];
    }
    return {};
}

std::optional<std::pair<double, double>> Census::range() const
{
    float lowest = m_lowest;
    float highest = m_highest;
    for (std::size_t i = 0; i < m_seen.size(); ++i)
        if (m_seen[i] > 0) {
            lowest = std::min(lowest, m_metres[i]);
            highest = std::max(highest, m_metres[i]);
        }
    if (lowest > highest)
        return {};
    return std::pair<double, double>(lowest, highest);
}

Result<Census> takeCensus(const Sheet &sheet, qint64 most, Progress &progress)
{
    const qint64 cells = qint64(sheet.size.width()) * sheet.size.height();
    const bool isWhole = cells <= most;
    Result<Census> found = censusOf(sheet, windowsOf(sheet, isWhole), progress);
    if (!found || isWhole || tellsHeights(*found))
        return found;
    // What little a huge file holds may lie between the windows.
    const QList<QRect> held = heldWindows(sheet);
    const Result<Census> more = censusOf(sheet, held, progress);
    if (!more)
        return more;
    found->add(*more);
    return found;
}

bool mayHideVoids(const RasterFile &raster)
{
    // Bytes and numbers without a sign hold none of those values.
    return !raster.noData && !raster.hasMask && raster.type != QLatin1String("Byte") &&
           !raster.type.startsWith(QLatin1String("UInt"));
}
