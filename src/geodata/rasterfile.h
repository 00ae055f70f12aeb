#pragma once

#include "base/result.h"
#include "geodata/gdalruntime.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// What a file of elevations says of itself.
struct RasterFile {
    QString name; ///< as GDAL opens it
    QSize size;   ///< cells
    GeoTransform transform{0.0, 1.0, 0.0, 0.0, 0.0, -1.0};
    bool isPlaced = false; ///< whether the file has a transform of its own
    QString crs;           ///< well-known text; empty where the file has none
    QString type;          ///< of its numbers, as GDAL names it: "Int16"
    QString unit;          ///< of its heights, as the file has it; may be empty
    double metres = 1.0;   ///< of one height unit
    double scale = 1.0;    ///< height = stored * scale + offset, in `unit`
    double offset = 0.0;
    std::optional<double> noData; ///< stored, stands for a void
    bool hasMask = false;         ///< whether a mask or a band of opacity tells the voids
    QSize block{256, 256};        ///< cells that the file keeps together
    int overviews = 0;
    QStringList notes; ///< sentences on what was found
    /// Of a surface made of points: its heights, which the name points to.
    std::shared_ptr<const Heights> memory;
    qint64 pointsRead = 0;
    qint64 pointsUsed = 0;

    /// Whether rows and columns run along the axes of the reference system.
    [[nodiscard]] bool isUpright() const
    {
        return transform[2] == 0 && transform[4] == 0;
    }
    /// Metres of one stored step, and of a stored 0.
    [[nodiscard]] double metresPerStep() const { return scale * metres; }
    [[nodiscard]] double metresAtZero() const { return offset * metres; }
};

/// Opens the raster of a name; of a file with several, the largest one of two dimensions.
[[nodiscard]] Result<Dataset> openRaster(const QString &name);

/// Reads what a file says of itself. A failure names the file and the reason.
[[nodiscard]] Result<RasterFile> describeRaster(const QString &name);

/// Metres of a unit of length as files spell it ("m", "metre", "ft", "US survey foot");
/// nothing where it is unknown. An empty one counts as metres.
[[nodiscard]] std::optional<double> metresOfUnit(const QString &unit);
