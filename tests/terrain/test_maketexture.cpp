#include "base/workerpool.h"
#include "terrain/elevationpicture.h"
#include "terrain/madeterrain.h"
#include "terrain/maketexture.h"
#include "terrain/rowwork.h"
#include "terrain/stopsat.h"
#include "terrain/writeterrain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

/// Textures of elevation files of the program.
class TestMakeTexture : public QObject {
    Q_OBJECT

private slots:
    void aTerrainsOwnFileTellsItsScales();
    void aFileAloneCountsInMetres();
    void otherKindsOfPicturesAreWritten();
    void whatCannotBeReadIsTold();
    void tooLittleMemoryIsTold();
    void aStopLeavesNothing();

private:
    static QString elevation(const QTemporaryDir &folder)
    {
        MadeSource source(madeHeights({80, 60}, [](int x, int y) {
            return 500.0 + 200.0 * std::sin(x * 0.1) * std::cos(y * 0.1);
        }));
        TerrainRequest request;
        request.files = QStringList{"made.tif"};
        request.out = folder.filePath("t");
        request.texture.light = BakedLight::Sun;
        NoProgress progress;
        return writeTerrain(source, request, progress)
                   ? folder.filePath("t_elevation.png")
                   : QString();
    }
};

void TestMakeTexture::aTerrainsOwnFileTellsItsScales()
{
    const QTemporaryDir folder;
    TextureFromElevation job;
    job.elevation = elevation(folder);
    job.out = folder.filePath("again.png");
    job.texture.light = BakedLight::Sun;
    NoProgress progress;
    const Result<TerrainReport> report = makeTexture(job, progress);
    QVERIFY2(report, report ? "" : qPrintable(report.error().text));
    QVERIFY(report->notes.isEmpty());
    QCOMPARE(report->cellX, 10.0);
    // Heights have lost what is less than a unit, which colours hardly show.
    const QImage first(folder.filePath("t_texture.png"));
    const QImage again(job.out);
    QCOMPARE(again.size(), first.size());
    int differing = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 80; ++x)
            if (std::abs(qGreen(first.pixel(x, y)) - qGreen(again.pixel(x, y))) > 2)
                ++differing;
    QVERIFY(differing < 5);
    QVERIFY(QFile::exists(folder.filePath("again.pgw")));
    QVERIFY(QFile::exists(folder.filePath("again.prj")));
    QCOMPARE(report->written.first(), job.out);
}

void TestMakeTexture::aFileAloneCountsInMetres()
{
    const QTemporaryDir folder;
    WorkerPool pool(1);
    NoProgress progress;
    const Heights heights = madeHeights({30, 20}, [](int x, int) { return x * 2.0; });
    TextureFromElevation job;
    job.elevation = folder.filePath("alone.png");
    job.out = folder.filePath("out.png");
    job.texture.palette = "grey";
    job.texture.light = BakedLight::Shadow;
    QVERIFY(elevationPicture(heights, 1.0, pool, Stretch{progress})
                ->image.save(job.elevation));
    const Result<TerrainReport> report = makeTexture(job, progress);
    QVERIFY(report);
    QCOMPARE(report->notes.size(), 2);
    QCOMPARE(report->range->second, 58.0);
    QVERIFY(!QFile::exists(folder.filePath("out.pgw")));
    const QImage steep(job.out);
    job.unit = 0.01;
    job.cell = QSizeF(10.0, 10.0);
    const Result<TerrainReport> given = makeTexture(job, progress);
    QVERIFY(given);
    QVERIFY(given->notes.isEmpty());
    QVERIFY(QImage(job.out) != steep);
}

void TestMakeTexture::otherKindsOfPicturesAreWritten()
{
    const QTemporaryDir folder;
    TextureFromElevation job;
    job.elevation = elevation(folder);
    job.out = folder.filePath("out.bmp");
    job.texture.size = QSize(40, 30);
    NoProgress progress;
    QVERIFY(makeTexture(job, progress));
    QCOMPARE(QImage(job.out).size(), QSize(40, 30));
    QVERIFY(QFile::exists(folder.filePath("out.bpw")));
}

void TestMakeTexture::whatCannotBeReadIsTold()
{
    const QTemporaryDir folder;
    NoProgress progress;
    TextureFromElevation job;
    job.elevation = folder.filePath("none.png");
    job.out = folder.filePath("out.png");
    const Result<TerrainReport> none = makeTexture(job, progress);
    QVERIFY(!none);
    QVERIFY(none.error().text.contains(job.elevation));
    QFile junk(folder.filePath("junk.png"));
    QVERIFY(junk.open(QIODevice::WriteOnly));
    junk.write("no picture");
    junk.close();
    job.elevation = junk.fileName();
    const Result<TerrainReport> unread = makeTexture(job, progress);
    QVERIFY(!unread);
    QVERIFY(unread.error().text.contains("junk.png"));
    // What holds other heights would give a texture of rubbish.
    QImage other(8, 8, QImage::Format_Grayscale16);
    other.fill(300);
    job.elevation = folder.filePath("other.png");
    QVERIFY(other.save(job.elevation));
    const Result<TerrainReport> rubbish = makeTexture(job, progress);
    QVERIFY(!rubbish);
    QVERIFY(rubbish.error().text.contains("16 bits"));
    QVERIFY(!QFile::exists(job.out));
}

void TestMakeTexture::tooLittleMemoryIsTold()
{
    const QTemporaryDir folder;
    const QString file = elevation(folder);
    QVERIFY(!file.isEmpty());
    TextureFromElevation job;
    job.elevation = file;
    job.out = folder.filePath("t.png");
    NoProgress progress;
    qputenv("ZEPHRANT_MEMORY_BUDGET", "1000");
    const auto made = makeTexture(job, progress);
    qunsetenv("ZEPHRANT_MEMORY_BUDGET");
    QVERIFY(!made);
    QCOMPARE(made.error().text,
             QString("There is not enough memory for the 80 x 60 pixels of \"%1\".")
                 .arg(file));
}

void TestMakeTexture::aStopLeavesNothing()
{
    const QTemporaryDir folder;
    TextureFromElevation job;
    job.elevation = elevation(folder);
    job.out = folder.filePath("out.png");
    const auto before = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    for (int question = 0; question < 8; ++question) {
        StopsAt progress(question);
        const Result<TerrainReport> report = makeTexture(job, progress);
        if (!progress.wasAsked()) {
            QVERIFY(question > 0 && report);
            break;
        }
        QVERIFY(!report);
        QVERIFY(report.error().stopped);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), before);
    }
}

QTEST_GUILESS_MAIN(TestMakeTexture)
#include "test_maketexture.moc"
