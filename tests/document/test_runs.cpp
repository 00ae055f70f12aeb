#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scene/scenerydata.h"
#include "views/imagemdichild.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

#include <sys/resource.h>

namespace {

// A scenery in a folder of its own with a small terrain and texture.
class Scenery {
public:
    explicit Scenery(const QStringList &lines = {})
    {
        ElevationImage elevation(64, 64, QImage::Format_RGB32);
        QImage texture(64, 64, QImage::Format_RGB32);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x) {
                elevation.setElevation(x, y, 300 + (x * x + 3 * y * x) % 500);
                texture.setPixel(x, y, qRgb(4 * x, 4 * y, 128));
            }
        }
        QVERIFY(saveImageFile(elevation, file("elev.png")));
        QVERIFY(saveImageFile(texture, file("tex.png")));
        const QStringList base{
            "BeobXA=32",          "BeobYA=-20",          "BeobZA=40",
            "BeobXE=32",          "BeobYE=10",           "BeobZE=40",
            "NeigungA=-30",       "NeigungE=-30",        "BrennA=60",
            "BrennE=60",          "Bildanzahl=5",        "Offset=0",
            "StartbildNr=0",      "EndbildNr=4",         "LichtX=1",
            "LichtY=1",           "LichtZ=-1",           "NebelA=1000",
            "NebelE=1000",        "Traegheit=0",         "AusgabePPM=1",
            "TDateiname=tex.png", "HDateiname=elev.png", "HDateiSkalaX=1",
            "HDateiSkalaY=1",     "HDateiSkalaZA=0.02",  "HDateiSkalaZE=0.02",
            "AusBreite=64",       "AusHoehe=48",         "AusAuflX=64",
            "AusAuflY=64",        "GenauRechnen=0"};
        QFile zph(file("scene.zph"));
        QVERIFY(zph.open(QIODevice::WriteOnly | QIODevice::Text));
        QTextStream out(&zph);
        out << "[Param]\n";
        for (const QString &line : base)
            out << line << '\n';
        out << "AusDateiname=" << file("f%02d") << '\n';
        for (const QString &line : lines)
            out << line << '\n';
        out.flush();
        zph.close();
        QVERIFY(delegate().open(file("scene.zph")));
    }

    QString file(const QString &name) const { return m_folder.filePath(name); }
    SceneryDelegate &delegate() { return m_view.delegate(); }
    QStringList frames(const QString &pattern = QStringLiteral("f*")) const
    {
        return QDir(m_folder.path()).entryList({pattern}, QDir::Files, QDir::Name);
    }
    QImage frame(const QString &name) const { return loadImageFile(file(name)); }

private:
    QTemporaryDir m_folder;
    SceneryMdiChild m_view{nullptr, nullptr, nullptr, nullptr, nullptr};
};

} // namespace

class TestRuns : public QObject {
    Q_OBJECT

private slots:
    void numbersBeginAtTheOffset()
    {
        Scenery scenery({"Offset=4"});
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.frames(),
                 (QStringList{"f04.ppm", "f05.ppm", "f06.ppm", "f07.ppm", "f08.ppm"}));
        QCOMPARE(scenery.frame("f04.ppm").size(), QSize(64, 48));
    }

    void partOfTheRangeRendersTheSameFrames()
    {
        Scenery whole;
        QVERIFY(whole.delegate().renderFinal(nullptr));
        Scenery part({"StartbildNr=2", "EndbildNr=3"});
        QVERIFY(part.delegate().renderFinal(nullptr));
        QCOMPARE(part.frames(), (QStringList{"f02.ppm", "f03.ppm"}));
        QCOMPARE(part.frame("f02.ppm"), whole.frame("f02.ppm"));
        QCOMPARE(part.frame("f03.ppm"), whole.frame("f03.ppm"));
        QVERIFY(whole.frame("f02.ppm") != whole.frame("f03.ppm"));
    }

    void rangeWithoutFramesSucceeds()
    {
        Scenery scenery({"StartbildNr=3", "EndbildNr=2"});
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QVERIFY(scenery.frames().isEmpty());
    }

    void allFormatsAreWritten()
    {
        Scenery scenery({"AusgabeTGA=1", "AusgabePNG=1", "AusgabeJPG=1", "EndbildNr=0"});
        QCOMPARE(scenery.delegate().frameFiles(0),
                 (QStringList{scenery.file("f00.tga"), scenery.file("f00.png"),
                              scenery.file("f00.jpg"), scenery.file("f00.ppm")}));
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.frame("f00.png"), scenery.frame("f00.ppm"));
        QCOMPARE(scenery.frames().size(), 4);
    }

    void nameWithoutConversionIsOverwritten()
    {
        Scenery scenery;
        scenery.delegate().sceneryData().AusDateiname = scenery.file("fix");
        scenery.delegate().dataToView();
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.frames(), QStringList{"fix.ppm"});
        Scenery last({"StartbildNr=4"});
        QVERIFY(last.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.frame("fix.ppm"), last.frame("f04.ppm"));
    }

    void extraHighQualityIsHalvedOnOutput()
    {
        Scenery scenery(
            {"GenauRechnen=2", "AusBreite=101", "AusHoehe=60", "EndbildNr=0"});
        ImageMdiChild view;
        QVERIFY(scenery.delegate().renderFinal(&view));
        QCOMPARE(scenery.frame("f00.ppm").size(), QSize(101, 60));
        QCOMPARE(pixmapOf(view).size(), QSize(202, 120)); // shown in double size
    }

    void previewHasHalfTheSizeWhateverTheQuality()
    {
        Scenery scenery({"GenauRechnen=2", "EndbildNr=0"});
        QVERIFY(scenery.delegate().renderPreview(nullptr));
        QCOMPARE(scenery.frame("f00.ppm").size(), QSize(32, 24));
    }

    void previewOfACoarseGridUsesOneCell()
    {
        Scenery scenery({"AusAuflX=3", "AusAuflY=2", "EndbildNr=0"});
        QVERIFY(scenery.delegate().renderPreview(nullptr));
        QCOMPARE(scenery.frames().size(), 1);
    }

    void viewShowsTitleAndFrame()
    {
        Scenery scenery({"EndbildNr=1", "Offset=3"});
        ImageMdiChild view;
        QVERIFY(scenery.delegate().renderFinal(&view));
        QVERIFY(view.isVisible());
        QCOMPARE(view.windowTitle(), scenery.file("f04"));
        QCOMPARE(pixmapOf(view).toImage().convertToFormat(QImage::Format_RGB32),
                 scenery.frame("f04.ppm").convertToFormat(QImage::Format_RGB32));
        QVERIFY(view.close()); // closing is allowed again
    }

    void viewShowsTheBackgroundBeforeTheFirstFrame()
    {
        Scenery scenery({"EndbildNr=0", "Hintergrund=203040"});
        ImageMdiChild view;
        QImage first;
        connect(&scenery.delegate(), &SceneryDelegate::frameStarted, this,
                [&] { first = pixmapOf(view).toImage(); });
        QVERIFY(scenery.delegate().renderFinal(&view));
        first.convertTo(QImage::Format_RGB32);
        QImage blank(first.size(), QImage::Format_RGB32);
        blank.fill(scenery.delegate().sceneryData().Hintergrund);
        QCOMPARE(blank.pixel(0, 0), 0xFF403020u); // the file has blue first
        QCOMPARE(first, blank);
    }

    void missingInputsAreNamed_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("error");
        QTest::newRow("texture") << "TDateiname=none.png"
                                 << "Could not open texture file \"none.png\"";
        QTest::newRow("elevation") << "HDateiname=no.png"
                                   << "Could not open elevation file \"no.png\"";
    }
    void missingInputsAreNamed()
    {
        QFETCH(QString, line);
        QFETCH(QString, error);
        Scenery scenery({line});
        ImageMdiChild view;
        QVERIFY(!scenery.delegate().renderFinal(&view));
        QCOMPARE(scenery.delegate().errorString(), error);
        QVERIFY(view.close());
    }

    void frameBeyondAllMemoryIsRefused()
    {
        Scenery scenery(
            {"AusBreite=32768", "AusHoehe=32768", "GenauRechnen=2", "EndbildNr=0"});
#ifdef ZEPHRANT_SANITIZED
        QSKIP("a sanitizer takes more addresses than any limit leaves");
#endif
        // Room for what the run needs besides, not for the 16 GB of the frame.
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_AS, &before), 0);
        rlimit tight = before;
        tight.rlim_cur = std::min<rlim_t>(rlim_t(8) << 30, before.rlim_max);
        QCOMPARE(setrlimit(RLIMIT_AS, &tight), 0);
        const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_AS, &before); });
        QVERIFY(!scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.delegate().errorString(),
                 QString("Could not create an image of 65536 x 65536 pixels"));
    }

    void filesThatCannotBeWrittenDoNotEndTheRun()
    {
        Scenery scenery({"EndbildNr=1"});
        scenery.delegate().sceneryData().AusDateiname = scenery.file("none/f%d");
        scenery.delegate().dataToView();
        QStringList failed;
        connect(&scenery.delegate(), &SceneryDelegate::frameSaved, this,
                [&](int, const QStringList &complaints) { failed += complaints; });
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        const QString told = "Could not save file \"%1\": No such file or directory.";
        QCOMPARE(failed, (QStringList{told.arg(scenery.file("none/f0.ppm")),
                                      told.arg(scenery.file("none/f1.ppm"))}));
    }

    void stopKeepsEarlierFramesAndTheViewsPart()
    {
        Scenery scenery;
        SceneryDelegate &delegate = scenery.delegate();
        connect(&delegate, &SceneryDelegate::frameStarted, this, [&](int frame) {
            if (frame == 2)
                delegate.stopRendering();
        });
        QList<int> saved;
        connect(&delegate, &SceneryDelegate::frameSaved, this,
                [&](int frame) { saved.append(frame); });
        QVERIFY(delegate.renderFinal(nullptr)); // a success
        QCOMPARE(scenery.frames(), (QStringList{"f00.ppm", "f01.ppm"}));
        QCOMPARE(saved, (QList<int>{0, 1}));
        // The next run sets the flag anew.
        delegate.disconnect(this);
        QVERIFY(delegate.renderFinal(nullptr));
        QCOMPARE(scenery.frames().size(), 5);
    }

    void offsetThatChangesMeanwhileHoldsFromTheNextFrame()
    {
        Scenery scenery({"EndbildNr=2"});
        SceneryDelegate &delegate = scenery.delegate();
        connect(&delegate, &SceneryDelegate::frameStarted, this, [&](int frame) {
            if (frame == 1)
                delegate.sceneryData().Offset = 10;
        });
        QList<int> saved;
        connect(&delegate, &SceneryDelegate::frameSaved, this,
                [&](int frame) { saved.append(frame); });
        QVERIFY(delegate.renderFinal(nullptr));
        QCOMPARE(scenery.frames(), (QStringList{"f00.ppm", "f01.ppm", "f12.ppm"}));
        QCOMPARE(saved, (QList<int>{0, 1, 2}));
    }

    void filterPassesFramesOver()
    {
        Scenery scenery;
        scenery.delegate().setFrameFilter([](int frame) { return frame % 2 == 1; });
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.frames(), (QStringList{"f01.ppm", "f03.ppm"}));
    }

    void threadsMakeNoDifference()
    {
        QList<QImage> frames;
        for (const int threads : {1, 2, 5}) {
            Scenery scenery({"GenauRechnen=1", "EndbildNr=0"});
            scenery.delegate().setThreads(threads);
            QVERIFY(scenery.delegate().renderFinal(nullptr));
            frames.append(scenery.frame("f00.ppm"));
        }
        QCOMPARE(frames[1], frames[0]);
        QCOMPARE(frames[2], frames[0]);
    }

    // What was shown stays as it was, though the frame grows on.
    void refreshShowsAPictureOfItsMoment()
    {
        Scenery scenery({"EndbildNr=0", "AusgabePPM=0", "AusAuflX=512", "AusAuflY=512"});
        ImageMdiChild view;
        int ticks = 0, changed = 0;
        QPixmap shown;
        QImage remembered;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            ++ticks;
            if (!shown.isNull() && shown.toImage() != remembered)
                ++changed;
            scenery.delegate().refresh();
            shown = pixmapOf(view);
            remembered = shown.toImage().copy();
            for (int y = 0; y < remembered.height(); ++y)
                for (int x = 0; x < remembered.width(); ++x)
                    QCOMPARE(qAlpha(remembered.pixel(x, y)), 0xFF);
        });
        timer.start(0);
        QVERIFY(scenery.delegate().renderFinal(&view));
        QVERIFY(ticks > 5);
        QCOMPARE(changed, 0);
    }

    void inputsLieBesideTheScenery()
    {
        // The names in the file are relative, and the current folder is another.
        Scenery scenery({"EndbildNr=0"});
        QVERIFY(scenery.delegate().renderFinal(nullptr));
        QCOMPARE(scenery.delegate().sceneryData().TDateiname, QString("tex.png"));
    }

private:
    static QPixmap pixmapOf(const ImageMdiChild &view)
    {
        for (const QLabel *label : view.findChildren<QLabel *>())
            if (!label->pixmap(Qt::ReturnByValue).isNull())
                return label->pixmap(Qt::ReturnByValue);
        return {};
    }
};

QTEST_MAIN(TestRuns)
#include "test_runs.moc"
