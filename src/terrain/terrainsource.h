#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/geogrid.h"
#include "terrain/heights.h"
#include "terrain/pointguess.h"
#include "terrain/track.h"

#include <QImage>
#include <QPointF>
#include <QStringList>

#include <functional>
#include <memory>

/// What a terrain says of itself before its cells are read.
struct TerrainFacts {
    QStringList files; ///< as given, folders and archives opened
    QSize size;        ///< cells of the whole
    GeoTransform transform{};
    double cellX = 0.0; ///< in units of the reference system
    double cellY = 0.0;
    QString crs;     ///< well-known text; empty: none
    QString crsName; ///< "EPSG:32633" or the system's name
    bool isGeographic = false;
    QString unit; ///< of the heights, as the files have it
    QString type; ///< of the numbers: "Int16"; of point files "points"
    int overviews = 0;
    qint64 pointsRead = 0; ///< of point files, else 0
    qint64 pointsUsed = 0;
    qint64 overlaps = 0; ///< cells on which more than one file lies
    qint64 gaps = 0;     ///< cells of the whole on which none lies
    QStringList notes;   ///< sentences on what was found
};

/// What a look at every cell of a terrain tells, or at a sample of those of a huge one.
struct TerrainScan {
    std::optional<std::pair<double, double>> range; ///< metres
    qint64 voids = 0;
    bool isApproximate = false;
};

/// A terrain that has been opened: one mosaic of all files of a request.
///
/// Not to be used by two threads at a time. Every call may take long but facts().
class Terrain {
public:
    virtual ~Terrain() = default;

    [[nodiscard]] virtual const TerrainFacts &facts() const = 0;
    /// Exact for up to 10^8 cells.
    [[nodiscard]] virtual Result<TerrainScan> scan(Progress &progress) = 0;
    /// Told of rows [from, to) of an overview that are ready; false: stop.
    using RowsReady = std::function<bool(const Heights &overview, int from, int to)>;
    /// The whole at a size of at most `most`, its shape kept, from overviews where there
    /// are some, each kept row that of the cells in its middle.
    [[nodiscard]] virtual Result<Heights> overview(const QSize &most,
                                                   const RowsReady &ready) = 0;
    /// The grid of a request: its reference system, its part of the earth, its cells.
    /// Fails on a part outside, and on a system that is unknown or cannot be reached.
    [[nodiscard]] virtual Result<OutputGrid> plan(const GridRequest &request) = 0;
    /// The heights of a grid, as `gdalwarp -et 0 -ot Float32 -ovr NONE` gives them.
    [[nodiscard]] virtual Result<Heights> heights(const OutputGrid &grid,
                                                  Progress &progress) = 0;
};

/// The head of a file of points among others.
struct PointFileHead {
    QString file;
    PointPreview preview;
};

/// What reads the files of the field. One object serves one thread at a time.
class TerrainSource {
public:
    virtual ~TerrainSource() = default;

    /// The library's name, version and licence, a line each.
    [[nodiscard]] virtual QStringList about() const = 0;
    /// Whether a file, folder or archive can be read as terrain; looks at its head only.
    [[nodiscard]] virtual bool canOpen(const QString &file) = 0;
    /// The head of the first of some files that holds points as text, also where it
    /// cannot be read as the options say; nothing where none does.
    [[nodiscard]] virtual std::optional<PointFileHead>
    pointHead(const QStringList & /*files*/, const PointOptions & /*options*/,
              Progress & /*progress*/)
    {
        return {};
    }
    [[nodiscard]] virtual Result<std::unique_ptr<Terrain>>
    open(const QStringList &files, const PointOptions &points, Progress &progress) = 0;
    /// Fills holes that known cells enclose; cells further than `cells` from a known one
    /// stay. How many were filled.
    [[nodiscard]] virtual Result<qint64> fillHoles(Heights &heights, double cells,
                                                   Progress &progress) = 0;
    /// The size at which photographs lie on a grid with cells of their own.
    [[nodiscard]] virtual Result<QSize> photoSize(const QStringList &files,
                                                  const OutputGrid &grid) = 0;
    /// Photographs warped onto the rectangle of a grid, RGB32; alpha 0 where none lies
    /// (Format_ARGB32 then). A later one wins.
    [[nodiscard]] virtual Result<QImage> photo(const QStringList &files,
                                               const OutputGrid &grid, const QSize &size,
                                               Progress &progress) = 0;
    /// A track, its places in the system of `crs` (well-known text); where that is empty,
    /// as the file has them.
    [[nodiscard]] virtual Result<Track> track(const QString &file, const QString &crs,
                                              Progress &progress) = 0;
    /// Longitude and latitude of places of the system of `crs`.
    [[nodiscard]] virtual Result<QList<QPointF>> geographic(const QList<QPointF> &places,
                                                            const QString &crs) = 0;
    /// Text of a `.prj` file for a system.
    [[nodiscard]] virtual QString projectionText(const QString &crs) = 0;
};
