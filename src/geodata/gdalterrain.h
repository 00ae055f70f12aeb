#pragma once

#include "geodata/mosaic.h"
#include "terrain/terrainsource.h"

/// A mosaic of files as a terrain.
class GdalTerrain final : public Terrain {
public:
    /// `given` are the names under which GDAL reads the files.
    [[nodiscard]] static Result<std::unique_ptr<Terrain>> of(const QStringList &given,
                                                             QList<RasterFile> rasters);

    [[nodiscard]] const TerrainFacts &facts() const override { return m_facts; }
    [[nodiscard]] Result<TerrainScan> scan(Progress &progress) override;
    [[nodiscard]] Result<Heights> overview(const QSize &most,
                                           const RowsReady &ready) override;
    [[nodiscard]] Result<OutputGrid> plan(const GridRequest &request) override;
    [[nodiscard]] Result<Heights> heights(const OutputGrid &grid,
                                          Progress &progress) override;

private:
    GdalTerrain() = default;
    void setFacts(const QStringList &given);
    [[nodiscard]] bool looksForVoids() const;
    [[nodiscard]] Result<bool> findVoids(Progress &progress);
    [[nodiscard]] Result<TerrainScan> scanSheets(Progress &progress);

    QList<RasterFile> m_rasters;
    Mosaic m_mosaic;
    OutputGrid m_whole; ///< of rasters that do not lie on one grid
    TerrainFacts m_facts;
    bool m_voidsAreKnown = false;
    std::optional<TerrainScan> m_scan;
};
