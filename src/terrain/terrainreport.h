#pragma once

#include <QJsonObject>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

struct TerrainFacts;
struct TerrainScan;

/// What is told of a terrain, and of the files that were made of one.
struct TerrainReport {
    QStringList files;   ///< that were read
    QStringList written; ///< in the order in which they took their places
    QSize size;          ///< cells
    double cellX = 0.0;  ///< metres where files were made, else units of `crs`
    double cellY = 0.0;
    QString crs;             ///< code or name; empty: none
    QString unit;            ///< of the heights as they were read
    double heightUnit = 0.0; ///< metres of a unit of the elevation file; 0: none was made
    std::optional<std::pair<double, double>> range; ///< metres
    qint64 voids = 0;                               ///< before holes were filled
    qint64 filled = 0;
    QString type; ///< of the numbers
    qint64 pointsRead = 0;
    qint64 pointsUsed = 0;
    qint64 cut = 0; ///< heights that the elevation file does not hold
    qint64 overlaps = 0;
    qint64 gaps = 0;
    bool isApproximate = false;
    QStringList notes; ///< sentences

    /// The keys that scripts rely on.
    [[nodiscard]] QJsonObject asJson() const;
    /// One line, as a status bar has room for it.
    [[nodiscard]] QString asLine() const;
};

/// The report on a terrain of which nothing is made.
[[nodiscard]] TerrainReport reportOf(const TerrainFacts &facts, const TerrainScan &scan);

/// The code or else the name of a reference system given as well-known text.
[[nodiscard]] QString crsNameOf(const QString &wellKnownText);
