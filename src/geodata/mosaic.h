#pragma once

#include "base/result.h"
#include "geodata/rasterfile.h"

#include <QList>
#include <QStringList>

#include <vector>

/// The smallest stretch that holds two others.
[[nodiscard]] Extent united(const Extent &one, const Extent &other);

/// The stretch that a raster covers; of a rotated one the box around it.
[[nodiscard]] Extent extentOf(const RasterFile &raster);

/// Rasters of one reference system whose cells fall on one grid, as one dataset of
/// heights in metres (Float32, voids are NaN). Later rasters lie on earlier ones.
struct Sheet {
    Dataset dataset;
    QByteArray virtualRaster; ///< text that the dataset was opened from
    QSize size;
    GeoTransform transform{};
    QString crs;
    bool isUpright = true;
    QList<RasterFile> rasters;
};

/// All rasters of a request, in the order in which they lie on each other.
struct Mosaic {
    std::vector<Sheet> sheets; ///< at least one
    std::vector<Sheet> layers; ///< the rasters one by one, as they are warped
    qint64 overlaps = 0;       ///< cells on which more than one raster lies
    qint64 gaps = 0;           ///< cells of the whole on which none lies
    QStringList notes;         ///< sentences on what was found

    [[nodiscard]] const QString &crs() const { return sheets.front().crs; }
    /// Whether there are rows and columns of the whole.
    [[nodiscard]] bool isOneGrid() const
    {
        return sheets.size() == 1 && sheets.front().isUpright;
    }
};

/// A sheet's dataset once more, for another thread.
[[nodiscard]] Result<Dataset> openSheet(const Sheet &sheet);

/// Puts rasters together. Tiles on both sides of the 180th meridian join: those in the
/// west get longitudes above 180. Fails where some have a reference system and others
/// none.
[[nodiscard]] Result<Mosaic> buildMosaic(QList<RasterFile> rasters);
