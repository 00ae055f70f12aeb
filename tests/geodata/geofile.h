#pragma once

#include "geodata/gdalruntime.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// A file of elevations that a test writes through GDAL.
struct GeoFile {
    QString name; ///< whole path
    QSize size{64, 48};
    GeoTransform transform{500000.0, 30.0, 0.0, 5000000.0, 0.0, -30.0};
    QString crs = QStringLiteral("EPSG:32633"); ///< empty: none
    const char *driver = "GTiff";
    GDALDataType type = GDT_Float32;
    QStringList options; ///< of its creation: "TILED=YES"
    std::optional<double> noData;
    std::function<double(int column, int row)> height; ///< hills by default
    std::function<void(GDALDatasetH)>
        more; ///< called on the dataset before it is written
};

/// Rounded hills of 200 to 1800.
[[nodiscard]] double hills(int column, int row);

/// Writes it; false where GDAL fails.
[[nodiscard]] bool write(const GeoFile &file);

/// Float32 cells of what gdalwarp makes with these arguments beside "-et 0 -ot Float32
/// -ovr NONE"; voids are NaN. No cells where it fails.
[[nodiscard]] Heights judgedByWarp(const QStringList &files,
                                   const QStringList &arguments);

/// The grid of an output as arguments of gdalwarp.
[[nodiscard]] QStringList argumentsFor(const OutputGrid &grid);

/// The cells of a file as gdal_translate gives them, a void of the file as NaN.
[[nodiscard]] Heights judgedByTranslate(const QString &file,
                                        const QStringList &arguments);
