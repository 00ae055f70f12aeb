#pragma once

#include "base/result.h"
#include "terrain/geogrid.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Where a picture lies on the earth, and what a unit of its heights is.
struct Georeference {
    GeoTransform transform{};
    QString crs;          ///< well-known text; empty: none
    double metresX = 1.0; ///< of a pixel
    double metresY = 1.0;
    std::optional<double> metresPerHeightUnit; ///< of elevation files
};

/// The georeference of a picture of another size over the same stretch of the earth.
[[nodiscard]] Georeference georeferenceOf(const OutputGrid &grid, const QSize &size);

/// The names of what stands beside a picture: NAME.pgw, NAME.prj, NAME.png.aux.xml.
[[nodiscard]] QString worldFileName(const QString &picture);
[[nodiscard]] QString projectionFileName(const QString &picture);
[[nodiscard]] QString auxiliaryFileName(const QString &picture);

/// A world file: six lines, the place that of the middle of the upper left pixel.
[[nodiscard]] QByteArray worldFileText(const GeoTransform &transform);

/// An auxiliary file as GDAL reads it beside every picture.
[[nodiscard]] QByteArray auxiliaryFileText(const Georeference &georeference);

/// What the files beside a picture of a size tell. Fails on an auxiliary file that is
/// none; what no file tells is left out: the transform is then all 0, the metres are 0.
[[nodiscard]] Result<Georeference> readSidecars(const QString &picture,
                                                const QSize &size);
