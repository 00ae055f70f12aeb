#pragma once

#include "base/progress.h"
#include "live/livepicture.h"
#include "raster/elevationimage.h"
#include "run/flightrun.h"
#include "run/runlistener.h"
#include "scene/scenerydocument.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cmath>

/// A folder with a small terrain and its texture, and sceneries over them.
class LiveScene {
public:
    LiveScene()
    {
        ElevationImage heights(48, 40, QImage::Format_RGB32);
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 48; ++x)
                heights.setElevation(
                    x, y, std::round(300 * std::sin(x * 0.3) * std::cos(y * 0.2) + 400));
        heights.save(path("heights.png"));
        writeTexture(0);
    }

    [[nodiscard]] QString folder() const { return m_dir.path(); }
    [[nodiscard]] QString path(const QString &name) const { return m_dir.filePath(name); }

    void writeTexture(int shade) const
    {
        QImage picture(48, 40, QImage::Format_RGB32);
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 48; ++x)
                picture.setPixel(x, y, qRgb(x * 5, y * 6, (x ^ y) * 4 + shade));
        picture.save(path("land.png"));
    }

    /// Another camera, shape, quality and kind of flight for each seed.
    [[nodiscard]] SceneryDocument document(quint32 seed) const
    {
        QRandomGenerator random(seed);
        const auto between = [&](double low, double high) {
            return low + random.generateDouble() * (high - low);
        };
        SceneryDocument document;
        SceneryData &data = document.parameters;
        data.TDateiname = "land.png"; // found beside the scenery
        data.HDateiname = "heights.png";
        data.AusDateiname = path("f%d");
        data.AusgabePNG = true;
        data.AusBreite = random.bounded(40, 90);
        data.AusHoehe = random.bounded(30, 80);
        data.AusAuflX = random.bounded(20, 60);
        data.AusAuflY = random.bounded(20, 60);
        data.BeobXA = between(0, 48);
        data.BeobXE = between(0, 48);
        data.BeobYA = data.BeobYE = between(-30, -5);
        data.BeobZA = data.BeobZE = between(15, 30);
        data.RichtungA = data.RichtungE = between(-20, 20);
        data.NeigungA = data.NeigungE = between(-50, -15);
        data.BrennA = data.BrennE = between(30, 80);
        data.HDateiSkalaZA = data.HDateiSkalaZE = 0.01;
        data.NebelA = data.NebelE = 1000.0;
        data.GenauRechnen = static_cast<int>(seed % 3);
        data.Bildanzahl = 9;
        data.EndbildNr = 8;
        if (seed % 4 == 3)
            curve(document);
        return document;
    }

    /// The first frame of such a scenery, in a view of that size.
    [[nodiscard]] LiveRequest request(quint32 seed, QSize view) const
    {
        LiveRequest wanted;
        wanted.document = document(seed);
        wanted.folder = folder();
        wanted.view = view;
        return wanted;
    }

    /// The frame as a run writes it that fits into a size.
    [[nodiscard]] QImage frameOfARun(SceneryDocument document, int frame,
                                     QSize within) const
    {
        document.parameters.StartbildNr = document.parameters.EndbildNr = frame;
        Silent listener;
        FlightRun run(document, {false, false, 1, folder(), within}, listener);
        if (!run.run())
            return {};
        return QImage(path(QStringLiteral("f%1.png").arg(frame)));
    }

private:
    class Silent : public RunListener {
    public:
        void targetMade(const QImage &) override {}
        void flightRefused(const QString &) override {}
        bool wants(int) override { return true; }
        void frameStarted(int, int, const QImage &) override {}
        void frameDrawn(int, const QImage &) override {}
        void frameSaved(int, const QStringList &) override {}
        void waiting() override {}
        bool step(qint64, qint64) override { return true; }
    };

    static void curve(SceneryDocument &document)
    {
        document.parameters.isStraight = false;
        document.controlPoints = {{5, -20, 30, 0.0},
                                  {20, -15, 25, 0.0},
                                  {30, -10, 22, 0.0},
                                  {40, -12, 28, 0.0}};
        document.waypointLevel = 0;
        for (int k = 0; k < 9; ++k)
            document.waypoints.append({0, 0, 25, 0.05 * k, -0.6});
    }

    QTemporaryDir m_dir;
};
