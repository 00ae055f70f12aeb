#include "geodata/gdalterrain.h"

#include "geodata/census.h"
#include "geodata/crs.h"
#include "geodata/gridplan.h"
#include "geodata/gridreader.h"
#include "geodata/overview.h"
#include "terrain/progressshare.h"

#include <QObject>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 MostCellsForExact = 100000000;

Sheet sheetOf(const RasterFile &raster)
{
    Sheet sheet;
    sheet.size = raster.size;
    sheet.transform = raster.transform;
    sheet.crs = raster.crs;
    sheet.rasters = {raster};
    return sheet;
}

qint64 cellsOf(const QSize &size) { return qint64(size.width()) * size.height(); }

qint64 cellsOf(const QList<RasterFile> &rasters)
{
    qint64 cells = 0;
    for (const RasterFile &raster : rasters)
        cells += cellsOf(raster.size);
    return cells;
}

// One of so many parts of some work.
ProgressShare partOf(Progress &whole, qint64 part, qint64 parts)
{
    constexpr qint64 Steps = 1000;
    return {whole, part * Steps, (part + 1) * Steps, parts * Steps};
}

// What all have in common, or all of it.
QString joined(const QList<RasterFile> &rasters, QString RasterFile::*member)
{
    QStringList all;
    for (const RasterFile &raster : rasters)
        if (!all.contains(raster.*member))
            all.append(raster.*member);
    return all.join(QLatin1String(", "));
}

} // namespace

Result<std::unique_ptr<Terrain>> GdalTerrain::of(const QStringList &given,
                                                 QList<RasterFile> rasters)
{
    std::unique_ptr<GdalTerrain> terrain(new GdalTerrain);
    Result<Mosaic> mosaic = buildMosaic(rasters);
    if (!mosaic)
        return tl::unexpected(mosaic.error());
    terrain->m_rasters = std::move(rasters);
    terrain->m_mosaic = std::move(*mosaic);
    if (terrain->m_mosaic.sheets.size() > 1) {
        Result<OutputGrid> whole = planWhole(terrain->m_mosaic);
        if (!whole)
            return tl::unexpected(whole.error());
        terrain->m_whole = std::move(*whole);
    }
    terrain->setFacts(given);
    return terrain;
}

void GdalTerrain::setFacts(const QStringList &given)
{
    const Sheet &first = m_mosaic.sheets.front();
    const bool isOne = m_mosaic.sheets.size() == 1;
    m_facts.files = given;
    m_facts.size = isOne ? first.size : m_whole.size;
    m_facts.transform = isOne ? first.transform : m_whole.transform;
    const GeoTransform &t = m_facts.transform;
    m_facts.cellX = std::hypot(t[1], t[4]);
    m_facts.cellY = std::hypot(t[2], t[5]);
    m_facts.crs = first.crs;
    m_facts.crsName = shortNameOf(first.crs);
    m_facts.isGeographic = isGeographic(first.crs);
    m_facts.unit = joined(m_rasters, &RasterFile::unit);
    m_facts.type = joined(m_rasters, &RasterFile::type);
    m_facts.overviews = m_rasters.front().overviews;
    for (const RasterFile &raster : m_rasters) {
        m_facts.overviews = std::min(m_facts.overviews, raster.overviews);
        m_facts.pointsRead += raster.pointsRead;
        m_facts.pointsUsed += raster.pointsUsed;
        for (const QString &note : raster.notes)
            if (!m_facts.notes.contains(note))
                m_facts.notes.append(note);
    }
    m_facts.overlaps = m_mosaic.overlaps;
    m_facts.gaps = m_mosaic.gaps;
    m_facts.notes += m_mosaic.notes;
}

bool GdalTerrain::looksForVoids() const
{
    return !m_voidsAreKnown &&
           std::any_of(m_rasters.begin(), m_rasters.end(),
                       [](const RasterFile &raster) { return mayHideVoids(raster); });
}

// Looks once for voids that files do not tell of.
Result<bool> GdalTerrain::findVoids(Progress &progress)
{
    if (m_voidsAreKnown)
        return true;
    const qint64 most = cellsOf(m_rasters) <= MostCellsForExact ? MostCellsForExact : 0;
    bool found = false;
    for (qsizetype i = 0; i < m_rasters.size(); ++i) {
        RasterFile &raster = m_rasters[i];
        if (!mayHideVoids(raster))
            continue;
        ProgressShare part = partOf(progress, i, m_rasters.size());
        Result<Census> census = takeCensus(sheetOf(raster), most, part);
        if (!census)
            return tl::unexpected(census.error());
        raster.noData = census->takeUntoldVoid();
        if (m_rasters.size() == 1 && most > 0)
            m_scan = TerrainScan{census->range(), census->voids(), false};
        if (!raster.noData)
            continue;
        found = true;
        m_facts.notes.append(
            QObject::tr("\"%1\" does not tell its voids; cells of %2 count as such.")
                .arg(raster.name)
                .arg(*raster.noData));
    }
    if (found) {
        Result<Mosaic> mosaic = buildMosaic(m_rasters);
        if (!mosaic)
            return tl::unexpected(mosaic.error());
        m_mosaic = std::move(*mosaic);
    }
    m_voidsAreKnown = true;
    return true;
}

Result<TerrainScan> GdalTerrain::scanSheets(Progress &progress)
{
    qint64 all = 0;
    for (const Sheet &sheet : m_mosaic.sheets)
        all += cellsOf(sheet.size);
    TerrainScan scan;
    scan.isApproximate = all > MostCellsForExact;
    const qint64 parts = qint64(m_mosaic.sheets.size());
    for (std::size_t i = 0; i < m_mosaic.sheets.size(); ++i) {
        const Sheet &sheet = m_mosaic.sheets[i];
        ProgressShare part = partOf(progress, qint64(i), parts);
        const Result<Census> census =
            takeCensus(sheet, scan.isApproximate ? 0 : MostCellsForExact, part);
        if (!census)
            return tl::unexpected(census.error());
        const double share = static_cast<double>(cellsOf(sheet.size)) /
                             static_cast<double>(std::max<qint64>(census->cells(), 1));
        scan.voids += std::llround(static_cast<double>(census->voids()) * share);
        const auto range = census->range();
        if (!range)
            continue;
        scan.range = scan.range ? std::pair(std::min(scan.range->first, range->first),
                                            std::max(scan.range->second, range->second))
                                : *range;
    }
    return scan;
}

Result<TerrainScan> GdalTerrain::scan(Progress &progress)
{
    // The search for voids finds the range of one raster as well.
    const bool isOne = m_rasters.size() == 1 && cellsOf(m_rasters) <= MostCellsForExact;
    const qint64 passes = looksForVoids() && !isOne ? 2 : 1;
    ProgressShare first = partOf(progress, 0, passes);
    const Result<bool> known = findVoids(first);
    if (!known)
        return tl::unexpected(known.error());
    if (!m_scan) {
        ProgressShare rest = partOf(progress, passes - 1, passes);
        Result<TerrainScan> scan = scanSheets(rest);
        if (!scan)
            return scan;
        m_scan = *scan;
    }
    return *m_scan;
}

Result<Heights> GdalTerrain::overview(const QSize &most, const RowsReady &ready)
{
    return readOverview(m_mosaic, m_whole, most.expandedTo({1, 1}), ready);
}

Result<OutputGrid> GdalTerrain::plan(const GridRequest &request)
{
    return planGrid(m_mosaic, request);
}

Result<Heights> GdalTerrain::heights(const OutputGrid &grid, Progress &progress)
{
    // Looking takes about a tenth of the time.
    constexpr qint64 Steps = 1000;
    const qint64 looked = looksForVoids() ? Steps / 10 : 0;
    ProgressShare first(progress, 0, looked, Steps);
    const Result<bool> known = findVoids(first);
    if (!known)
        return tl::unexpected(known.error());
    ProgressShare rest(progress, looked, Steps, Steps);
    return readHeights(m_mosaic, grid, rest);
}
