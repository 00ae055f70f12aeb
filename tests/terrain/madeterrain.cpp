#include "terrain/madeterrain.h"

#include <cmath>

MadeTerrain::MadeTerrain(Heights heights, OutputGrid grid)
    : m_heights(std::move(heights)), m_grid(std::move(grid))
{
    m_facts.files = QStringList{"made.tif"};
    m_facts.size = m_heights.size;
    m_facts.transform = m_grid.transform;
    m_facts.crs = m_grid.crs;
    m_facts.type = "Float32";
    m_facts.unit = "metre";
}

Result<TerrainScan> MadeTerrain::scan(Progress &) { return TerrainScan{}; }

Result<Heights> MadeTerrain::overview(const QSize &, const RowsReady &)
{
    return m_heights;
}

Result<OutputGrid> MadeTerrain::plan(const GridRequest &) { return m_grid; }

Result<Heights> MadeTerrain::heights(const OutputGrid &, Progress &progress)
{
    if (!progress.step(1, 2))
        return stopped();
    return m_heights;
}

MadeSource::MadeSource(Heights cells, double cell) : heights(std::move(cells))
{
    grid.size = heights.size;
    grid.crs = someCrs();
    grid.transform = {400000.0, cell, 0.0, 5000000.0, 0.0, -cell};
    grid.metresX = cell;
    grid.metresY = cell;
}

Result<std::unique_ptr<Terrain>> MadeSource::open(const QStringList &,
                                                  const PointOptions &, Progress &)
{
    if (!openFailure.isEmpty())
        return failed(openFailure);
    return std::make_unique<MadeTerrain>(heights, grid);
}

Result<qint64> MadeSource::fillHoles(Heights &cells, double, Progress &progress)
{
    if (!progress.step(0, 1))
        return stopped();
    for (float &height : cells.metres) {
        if (std::isnan(height)) {
            height = 7.0f;
            ++filled;
        }
    }
    return filled;
}

Result<QSize> MadeSource::photoSize(const QStringList &, const OutputGrid &)
{
    return photograph.size();
}

Result<QImage> MadeSource::photo(const QStringList &, const OutputGrid &,
                                 const QSize &size, Progress &)
{
    return photograph.scaled(size);
}

Result<Track> MadeSource::track(const QString &, const QString &, Progress &)
{
    return Track{};
}

Result<QList<QPointF>> MadeSource::geographic(const QList<QPointF> &places,
                                              const QString &)
{
    return places;
}

Heights madeHeights(const QSize &size, const std::function<double(int, int)> &metres)
{
    Heights heights;
    heights.size = size;
    heights.metres.reserve(std::size_t(size.width()) * std::size_t(size.height()));
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            heights.metres.push_back(static_cast<float>(metres(x, y)));
    return heights;
}

QString someCrs()
{
    return QStringLiteral(
        R"(PROJCS["WGS 84 / UTM zone 33N",GEOGCS["WGS 84",DATUM["WGS_1984",)"
        R"(SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],)"
        R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
        R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",15],)"
        R"(PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],)"
        R"(PARAMETER["false_northing",0],UNIT["metre",1],)"
        R"(AUTHORITY["EPSG","32633"]])");
}
