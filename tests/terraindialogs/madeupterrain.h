#pragma once

#include "terrain/points.h"
#include "terrain/terrainsource.h"

#include <QThread>

#include <cmath>

/// A terrain of hills that no file holds: 300 by 200 cells of 30 m, in UTM zone 32.
class MadeUpTerrain : public Terrain {
public:
    /// `pause`: milliseconds that each row of the overview takes.
    explicit MadeUpTerrain(const QStringList &files, int pause = 0) : m_pause(pause)
    {
        m_facts.files = files;
        m_facts.size = {300, 200};
        m_facts.transform = {400000.0, 30.0, 0.0, 5300000.0, 0.0, -30.0};
        m_facts.cellX = m_facts.cellY = 30.0;
        m_facts.crs = QStringLiteral("PROJCS[\"made up\"]");
        m_facts.crsName = QStringLiteral("EPSG:32632");
        m_facts.unit = QStringLiteral("m");
        m_facts.type = QStringLiteral("Float32");
    }

    [[nodiscard]] const TerrainFacts &facts() const override { return m_facts; }

    [[nodiscard]] Result<TerrainScan> scan(Progress &progress) override
    {
        if (!progress.step(1, 1))
            return stopped();
        TerrainScan scan;
        scan.range = {200.0, 1800.0};
        scan.voids = 600;
        return scan;
    }

    [[nodiscard]] Result<Heights> overview(const QSize &, const RowsReady &ready) override
    {
        Heights heights = cells(QRect(QPoint(), m_facts.size));
        for (int y = 0; y < heights.size.height(); ++y) {
            if (m_pause > 0)
                QThread::msleep(static_cast<unsigned long>(m_pause));
            if (!ready(heights, y, y + 1))
                return stopped();
        }
        return heights;
    }

    [[nodiscard]] Result<OutputGrid> plan(const GridRequest &request) override
    {
        if (request.crs == QLatin1String("EPSG:1"))
            return failed(QStringLiteral("\"EPSG:1\" is no reference system."));
        OutputGrid grid;
        grid.cells = request.cells.value_or(QRect(QPoint(), m_facts.size));
        grid.crs = m_facts.crs;
        grid.transform = m_facts.transform;
        grid.transform[0] += 30.0 * grid.cells->x();
        grid.transform[3] -= 30.0 * grid.cells->y();
        grid.size = grid.cells->size();
        grid.metresX = grid.metresY = 30.0;
        return grid;
    }

    [[nodiscard]] Result<Heights> heights(const OutputGrid &grid,
                                          Progress &progress) override
    {
        if (!progress.step(1, 1))
            return stopped();
        return cells(*grid.cells);
    }

private:
    [[nodiscard]] static Heights cells(const QRect &part)
    {
        Heights heights;
        heights.size = part.size();
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x)
                heights.metres.push_back(float(1000.0 + 500.0 * std::sin(x / 40.0) +
                                               300.0 * std::cos(y / 25.0 + x / 90.0)));
        }
        return heights;
    }

    TerrainFacts m_facts;
    int m_pause;
};

/// Opens any name but those with "broken" in them.
class MadeUpSource : public TerrainSource {
public:
    explicit MadeUpSource(int pause = 0) : m_pause(pause) {}

    [[nodiscard]] QStringList about() const override { return {QStringLiteral("none")}; }
    [[nodiscard]] bool canOpen(const QString &file) override
    {
        return !file.contains(QStringLiteral("broken"));
    }
    [[nodiscard]] std::optional<PointFileHead>
    pointHead(const QStringList &files, const PointOptions &options, Progress &) override
    {
        const auto look = lookAtPointFile(files.value(0), options);
        return look ? std::optional(PointFileHead{files.value(0), *look}) : std::nullopt;
    }
    [[nodiscard]] Result<std::unique_ptr<Terrain>> open(const QStringList &files,
                                                        const PointOptions &options,
                                                        Progress &progress) override
    {
        if (const auto head = pointHead(files, options, progress);
            head && !head->preview.fault.isEmpty())
            return failed(head->preview.fault);
        for (const QString &file : files) {
            if (!canOpen(file))
                return failed(QStringLiteral("Cannot read \"%1\": broken.").arg(file));
        }
        return std::make_unique<MadeUpTerrain>(files, m_pause);
    }
    [[nodiscard]] Result<qint64> fillHoles(Heights &, double, Progress &) override
    {
        return 0;
    }
    [[nodiscard]] Result<QSize> photoSize(const QStringList &,
                                          const OutputGrid &grid) override
    {
        return grid.size;
    }
    [[nodiscard]] Result<QImage> photo(const QStringList &, const OutputGrid &,
                                       const QSize &size, Progress &) override
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        return image;
    }
    [[nodiscard]] Result<Track> track(const QString &file, const QString &,
                                      Progress &) override
    {
        return failed(QStringLiteral("\"%1\" holds no track.").arg(file));
    }
    [[nodiscard]] Result<QList<QPointF>> geographic(const QList<QPointF> &places,
                                                    const QString &) override
    {
        return places;
    }
    [[nodiscard]] QString projectionText(const QString &crs) override { return crs; }

private:
    int m_pause;
};
