#include "geodata/geodata.h"

#include "geodata/crs.h"
#include "geodata/gdalterrain.h"
#include "geodata/holes.h"
#include "geodata/inputs.h"
#include "geodata/photos.h"
#include "geodata/pointrasters.h"
#include "geodata/tracks.h"

namespace {

class GdalSource final : public TerrainSource {
public:
    GdalSource() { startGdal(); }

    [[nodiscard]] QStringList about() const override { return aboutGdal(); }
    [[nodiscard]] bool canOpen(const QString &file) override
    {
        return holdsElevations(file) || pointKindOf(file) != PointKind::None;
    }
    [[nodiscard]] std::optional<PointFileHead> pointHead(const QStringList &files,
                                                         const PointOptions &options,
                                                         Progress &progress) override;
    [[nodiscard]] Result<std::unique_ptr<Terrain>> open(const QStringList &files,
                                                        const PointOptions &points,
                                                        Progress &progress) override;
    [[nodiscard]] Result<qint64> fillHoles(Heights &heights, double cells,
                                           Progress &progress) override
    {
        return ::fillHoles(heights, cells, progress);
    }
    [[nodiscard]] Result<QSize> photoSize(const QStringList &files,
                                          const OutputGrid &grid) override
    {
        return photoSizeOn(files, grid);
    }
    [[nodiscard]] Result<QImage> photo(const QStringList &files, const OutputGrid &grid,
                                       const QSize &size, Progress &progress) override
    {
        return photoOn(files, grid, size, progress);
    }
    [[nodiscard]] Result<Track> track(const QString &file, const QString &crs,
                                      Progress &progress) override;
    [[nodiscard]] Result<QList<QPointF>> geographic(const QList<QPointF> &places,
                                                    const QString &crs) override
    {
        return toDegrees(places, crs);
    }
    [[nodiscard]] QString projectionText(const QString &crs) override
    {
        return projectionTextOf(crs);
    }
};

std::optional<PointFileHead> GdalSource::pointHead(const QStringList &files,
                                                   const PointOptions &options,
                                                   Progress &progress)
{
    for (const QString &file : files) {
        if (!progress.step(0, files.size()))
            return {};
        if (pointKindOf(file) != PointKind::Text)
            continue;
        if (auto preview = headOfPoints(file, options))
            return PointFileHead{file, std::move(*preview)};
    }
    return {};
}

// Points lie below rasters, which know their cells.
Result<std::unique_ptr<Terrain>>
GdalSource::open(const QStringList &files, const PointOptions &points, Progress &progress)
{
    const Result<QStringList> names = expandInputs(files, progress);
    if (!names)
        return tl::unexpected(names.error());
    QStringList texts;
    QStringList vectors;
    QList<RasterFile> rasters;
    for (const QString &name : *names) {
        if (!progress.step(rasters.size(), names->size()))
            return stopped();
        if (const PointKind kind = pointKindOf(name); kind != PointKind::None) {
            (kind == PointKind::Text ? texts : vectors).append(name);
            continue;
        }
        Result<RasterFile> raster = describeRaster(name);
        if (!raster)
            return tl::unexpected(raster.error());
        rasters.append(std::move(*raster));
    }
    if (!texts.isEmpty() || !vectors.isEmpty()) {
        Result<QList<RasterFile>> surfaces =
            rastersOfPoints(texts, vectors, points, progress);
        if (!surfaces)
            return tl::unexpected(surfaces.error());
        rasters = std::move(*surfaces) + rasters;
    }
    return GdalTerrain::of(*names, std::move(rasters));
}

Result<Track> GdalSource::track(const QString &file, const QString &crs,
                                Progress &progress)
{
    return readTrack(file, crs, progress);
}

} // namespace

std::unique_ptr<TerrainSource> makeGeodata() { return std::make_unique<GdalSource>(); }
