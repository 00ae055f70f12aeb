#pragma once

#include "base/progress.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"
#include "terrain/pointguess.h"
#include "terrain/pointreader.h"

#include <QIODevice>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

/// Points as a raster of heights.
struct PointSheet {
    QStringList files;
    Heights heights;
    GeoTransform transform{};
    bool isGrid = false;       ///< else a surface of triangles
    bool isGeographic = false; ///< longitudes and latitudes (WGS 84); else not known
    qint64 pointsRead = 0;
    qint64 pointsUsed = 0;
    QStringList notes; ///< sentences on what was found
};

/// Opens a text for reading, or tells why it cannot be opened: for files in archives.
using OpenText = std::function<Result<std::unique_ptr<QIODevice>>(const QString &file)>;

/// Opens a file of the disk.
[[nodiscard]] Result<std::unique_ptr<QIODevice>> openTextFile(const QString &file);

/// Whether the head of a file holds points as text. Quick.
[[nodiscard]] bool holdsPoints(const QString &file, const OpenText &open = openTextFile);

/// The first lines of a file, split, and how they are read, also where they cannot be
/// read as the options say; fails only where the file cannot be opened.
[[nodiscard]] Result<PointPreview> lookAtPointFile(const QString &file,
                                                   const PointOptions &options,
                                                   const OpenText &open = openTextFile);

/// The same; lines that cannot be read so are a failure.
[[nodiscard]] Result<PointPreview> previewPointFile(const QString &file,
                                                    const PointOptions &options,
                                                    const OpenText &open = openTextFile);

/// Files of points as rasters. Each file whose points lie on a grid becomes that grid;
/// all others become one surface of triangles. Later ones lie on earlier ones.
[[nodiscard]] Result<std::vector<PointSheet>>
readPointFiles(const QStringList &files, const PointOptions &options, Progress &progress,
               const OpenText &open = openTextFile);

/// Points of any other kind as a surface of triangles; what is known of the sheet is
/// filled in already.
[[nodiscard]] Result<PointSheet> surfaceOf(std::vector<GroundPoint> points,
                                           PointSheet sheet, double longestEdge,
                                           Progress &progress);
