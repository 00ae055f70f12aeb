#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "geodata/gdalruntime.h"

#include <QString>

#include <optional>
#include <vector>

/// A place of a vector file in the reference system that was asked for.
struct VectorPlace {
    double x = 0.0;
    double y = 0.0;
    std::optional<double> metres; ///< height, where the file has one
};

/// A line, or a point alone, of a vector file.
struct VectorShape {
    std::vector<VectorPlace> places;
    QString name;
    std::optional<double> time; ///< of a point, seconds from any moment
    bool isLine = false;
};

/// All lines and points of a file, in their order.
struct VectorFile {
    std::vector<VectorShape> shapes;
    QString crs;            ///< that its places are in: as asked for, else the file's own
    bool hasSystem = false; ///< the file tells one
};

/// Opens a vector file of any kind that GDAL reads; archives by what is in them. Null
/// with a message of GDAL where it is none.
[[nodiscard]] Dataset openVector(const QString &file);

/// Reads lines and points, and the outer borders of areas. The parts of one shape are one
/// line. `crs` is well-known text; empty: that of the first layer is kept. Heights are
/// those of the coordinates, else those of a column that is named after heights; a 0 in
/// coordinates counts as none, since many programs write it there.
[[nodiscard]] Result<VectorFile> readVector(const QString &file, const QString &crs,
                                            Progress &progress);
