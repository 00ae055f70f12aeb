#pragma once

#include "terrain/terrainsource.h"

#include <functional>

/// A terrain that a test makes up: every request gives its heights as they are.
class MadeTerrain final : public Terrain {
public:
    MadeTerrain(Heights heights, OutputGrid grid);

    [[nodiscard]] const TerrainFacts &facts() const override { return m_facts; }
    [[nodiscard]] Result<TerrainScan> scan(Progress &progress) override;
    [[nodiscard]] Result<Heights> overview(const QSize &most,
                                           const RowsReady &ready) override;
    [[nodiscard]] Result<OutputGrid> plan(const GridRequest &request) override;
    [[nodiscard]] Result<Heights> heights(const OutputGrid &grid,
                                          Progress &progress) override;

private:
    TerrainFacts m_facts;
    Heights m_heights;
    OutputGrid m_grid;
};

/// Reads one made-up terrain, whatever the files.
class MadeSource final : public TerrainSource {
public:
    Heights heights;
    OutputGrid grid;     ///< its size is that of the heights
    QImage photograph;   ///< scaled to what is asked for
    QString openFailure; ///< not empty: opening fails so
    qint64 filled = 0;   ///< cells that fillHoles() filled, all of them with 7 m

    explicit MadeSource(Heights cells, double cell = 10.0);

    [[nodiscard]] QStringList about() const override { return {}; }
    [[nodiscard]] bool canOpen(const QString &) override { return true; }
    [[nodiscard]] Result<std::unique_ptr<Terrain>> open(const QStringList &files,
                                                        const PointOptions &points,
                                                        Progress &progress) override;
    [[nodiscard]] Result<qint64> fillHoles(Heights &cells, double distance,
                                           Progress &progress) override;
    [[nodiscard]] Result<QSize> photoSize(const QStringList &files,
                                          const OutputGrid &on) override;
    [[nodiscard]] Result<QImage> photo(const QStringList &files, const OutputGrid &on,
                                       const QSize &size, Progress &progress) override;
    [[nodiscard]] Result<Track> track(const QString &file, const QString &crs,
                                      Progress &progress) override;
    [[nodiscard]] Result<QList<QPointF>> geographic(const QList<QPointF> &places,
                                                    const QString &crs) override;
    [[nodiscard]] QString projectionText(const QString &crs) override { return crs; }
};

/// Heights by a function of the column and the row, from the upper left.
[[nodiscard]] Heights madeHeights(const QSize &size,
                                  const std::function<double(int, int)> &metres);

/// A small reference system, of Europe's UTM zone 33.
[[nodiscard]] QString someCrs();
