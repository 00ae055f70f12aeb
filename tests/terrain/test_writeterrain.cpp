#include "raster/elevationimage.h"
#include "scene/sceneryfile.h"
#include "support/textfile.h"
#include "terrain/madeterrain.h"
#include "terrain/sidecars.h"
#include "terrain/stopsat.h"
#include "terrain/writeterrain.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

/// A terrain becomes its files: all of them, or none.
class TestWriteTerrain : public QObject {
    Q_OBJECT

private slots:
    void allFilesAreThere();
    void heightsAreThoseOfTheTerrain();
    void sceneryShowsWhatWasWritten();
    void holesAreFilledOrTakeTheLowest_data();
    void holesAreFilledOrTakeTheLowest();
    void heightsBeyondTheFileAreCutAndTold();
    void photographsAreTheTexture();
    void reportHasTheKeysOfScripts();
    void aStopLeavesWhatWasThere();
    void failuresLeaveNothing_data();
    void failuresLeaveNothing();
    void anEndingIsLeftOut();

private:
    static Heights hills()
    {
        return madeHeights({90, 70}, [](int x, int y) {
            return 300.0 + 120.0 * std::sin(x * 0.1) * std::cos(y * 0.13);
        });
    }
    static TerrainRequest request(const QTemporaryDir &folder)
    {
        TerrainRequest wanted;
        wanted.files = QStringList{"made.tif"};
        wanted.out = folder.filePath("t");
        return wanted;
    }
    static QStringList entries(const QTemporaryDir &folder)
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

void TestWriteTerrain::allFilesAreThere()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    NoProgress progress;
    const Result<TerrainReport> report = writeTerrain(source, request(folder), progress);
    QVERIFY2(report, report ? "" : qPrintable(report.error().text));
    QCOMPARE(entries(folder),
             (QStringList{"t.zph", "t_elevation.pgw", "t_elevation.png",
                          "t_elevation.png.aux.xml", "t_elevation.prj", "t_texture.pgw",
                          "t_texture.png", "t_texture.png.aux.xml", "t_texture.prj"}));
    QCOMPARE(report->written.size(), 9);
    QCOMPARE(report->written.last(), folder.filePath("t.zph"));
    // A terrain without a system has no file that tells one; an older one goes.
    source.grid.crs.clear();
    QVERIFY(writeTerrain(source, request(folder), progress));
    QVERIFY(!entries(folder).contains("t_elevation.prj"));
    QVERIFY(!entries(folder).contains("t_texture.prj"));
}

void TestWriteTerrain::heightsAreThoseOfTheTerrain()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    NoProgress progress;
    QVERIFY(writeTerrain(source, request(folder), progress));
    ElevationImage image(folder.filePath("t_elevation.png"));
    QCOMPARE(image.size(), source.heights.size);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            QVERIFY(std::abs(ElevationImage::stepsOf(image.pixel(x, y)) * 0.01 -
                             double(source.heights.row(y)[x])) < 0.00501);
    const Result<Georeference> place =
        readSidecars(folder.filePath("t_elevation.png"), image.size());
    QVERIFY(place);
    QCOMPARE(place->transform, source.grid.transform);
    QCOMPARE(place->metresPerHeightUnit.value_or(0.0), 0.01);
}

void TestWriteTerrain::sceneryShowsWhatWasWritten()
{
    const QTemporaryDir folder;
    MadeSource source(hills(), 25.0);
    NoProgress progress;
    TerrainRequest wanted = request(folder);
    wanted.exaggeration = 2.0;
    QVERIFY(writeTerrain(source, wanted, progress));
    QFile file(folder.filePath("t.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const Result<SceneryReading> reading = readScenery(file, {});
    QVERIFY(reading && reading->complaint.isEmpty());
    const SceneryData &data = reading->document.parameters;
    QCOMPARE(data.HDateiname, QString("t_elevation.png"));
    QCOMPARE(data.TDateiname, QString("t_texture.png"));
    QCOMPARE(data.HDateiSkalaZA, 0.0008);
    QCOMPARE(reading->document.extras.MetresPerUnit, 25.0);
    QCOMPARE(QImage(folder.filePath("t_texture.png")).size(), source.heights.size);
}

void TestWriteTerrain::holesAreFilledOrTakeTheLowest_data()
{
    QTest::addColumn<bool>("isFilled");
    QTest::addColumn<double>("expected");
    QTest::newRow("filled") << true << 7.0;
    QTest::newRow("kept") << false << 180.0;
}

void TestWriteTerrain::holesAreFilledOrTakeTheLowest()
{
    QFETCH(bool, isFilled);
    QFETCH(double, expected);
    const QTemporaryDir folder;
    Heights heights = hills();
    heights.row(30)[40] = std::numeric_limits<float>::quiet_NaN();
    heights.row(1)[1] = 180.0f;
    MadeSource source(heights);
    NoProgress progress;
    TerrainRequest wanted = request(folder);
    if (!isFilled)
        wanted.fill.reset();
    const Result<TerrainReport> report = writeTerrain(source, wanted, progress);
    QVERIFY(report);
    QCOMPARE(report->voids, qint64(1));
    QCOMPARE(report->filled, qint64(isFilled ? 1 : 0));
    const QImage image(folder.filePath("t_elevation.png"));
    const double lowest = double(rangeOf(source.heights)->first);
    const double stored = ElevationImage::stepsOf(image.pixel(40, 30)) * 0.01;
    QVERIFY(std::abs(stored - (isFilled ? expected : lowest)) < 0.006);
}

void TestWriteTerrain::heightsBeyondTheFileAreCutAndTold()
{
    const QTemporaryDir folder;
    Heights heights = hills();
    heights.row(3)[3] = 100000.0f;
    MadeSource source(heights);
    NoProgress progress;
    const Result<TerrainReport> report = writeTerrain(source, request(folder), progress);
    QVERIFY(report);
    QCOMPARE(report->cut, qint64(1));
    QVERIFY(!report->notes.isEmpty());
    const QImage image(folder.filePath("t_elevation.png"));
    QCOMPARE(ElevationImage::stepsOf(image.pixel(3, 3)), ElevationImage::HighestStep);
}

void TestWriteTerrain::photographsAreTheTexture()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    source.photograph = QImage(180, 140, QImage::Format_RGB32);
    source.photograph.fill(qRgb(40, 90, 160));
    NoProgress progress;
    TerrainRequest wanted = request(folder);
    wanted.texture.photos = QStringList{"photo.tif"};
    QVERIFY(writeTerrain(source, wanted, progress));
    const QImage texture(folder.filePath("t_texture.png"));
    QCOMPARE(texture.size(), QSize(180, 140));
    QCOMPARE(texture.pixel(9, 9), qRgb(40, 90, 160));
    wanted.texture.light = BakedLight::Sky;
    QVERIFY(writeTerrain(source, wanted, progress));
    QVERIFY(QImage(folder.filePath("t_texture.png")) != texture);
}

void TestWriteTerrain::reportHasTheKeysOfScripts()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    NoProgress progress;
    const Result<TerrainReport> report = writeTerrain(source, request(folder), progress);
    QVERIFY(report);
    const QJsonObject object = report->asJson();
    for (const char *const key : {"file", "columns", "rows", "cellX", "cellY", "crs",
                                  "unit", "minimum", "maximum", "voids", "type",
                                  "pointsRead", "pointsUsed", "cut", "overlaps", "gaps"})
        QVERIFY2(object.contains(key), key);
    QCOMPARE(object["columns"].toInt(), 90);
    QCOMPARE(object["crs"].toString(), QString("EPSG:32633"));
    QCOMPARE(object["unit"].toDouble(), 0.01);
    QVERIFY(report->asLine().startsWith("70 rows, 90 columns, 180.0"));
}

void TestWriteTerrain::aStopLeavesWhatWasThere()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    NoProgress unwatched;
    QVERIFY(writeTerrain(source, request(folder), unwatched));
    const QStringList before = entries(folder);
    const QByteArray scenery = bytesIn(folder.filePath("t.zph"));
    const QByteArray elevation = bytesIn(folder.filePath("t_elevation.png"));
    source.heights.metres[5] = 999.0f;
    int stops = 0;
    for (int question = 0; question < 200; ++question) {
        StopsAt progress(question);
        const Result<TerrainReport> report =
            writeTerrain(source, request(folder), progress);
        if (report)
            break;
        QVERIFY(report.error().stopped);
        QCOMPARE(entries(folder), before);
        QCOMPARE(bytesIn(folder.filePath("t.zph")), scenery);
        QCOMPARE(bytesIn(folder.filePath("t_elevation.png")), elevation);
        ++stops;
    }
    QVERIFY(stops > 10 && stops < 200);
    QVERIFY(bytesIn(folder.filePath("t_elevation.png")) != elevation);
}

void TestWriteTerrain::failuresLeaveNothing_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("said");
    QTest::newRow("cannot be opened") << "open"
                                      << "no terrain";
    QTest::newRow("no palette") << "palette"
                                << "\"alpin\"";
    QTest::newRow("no heights") << "voids"
                                << "no heights";
    QTest::newRow("no folder") << "folder"
                               << "none/t_elevation.png";
    QTest::newRow("no name") << "name"
                             << "name";
    QTest::newRow("too fine a unit") << "unit"
                                     << "too small";
}

void TestWriteTerrain::failuresLeaveNothing()
{
    QFETCH(QString, what);
    QFETCH(QString, said);
    const QTemporaryDir folder;
    MadeSource source(hills());
    TerrainRequest wanted = request(folder);
    if (what == "open")
        source.openFailure = "This is no terrain.";
    if (what == "palette")
        wanted.texture.palette = "alpin";
    if (what == "voids") {
        wanted.fill.reset();
        source.heights = madeHeights(
            {90, 70}, [](int, int) { return std::numeric_limits<double>::quiet_NaN(); });
    }
    if (what == "folder")
        wanted.out = folder.filePath("none/t");
    if (what == "name")
        wanted.out = folder.path() + "/";
    if (what == "unit")
        wanted.unit = 1e-8;
    NoProgress progress;
    const Result<TerrainReport> report = writeTerrain(source, wanted, progress);
    QVERIFY(!report);
    QVERIFY2(report.error().text.contains(said), qPrintable(report.error().text));
    QCOMPARE(entries(folder), QStringList());
}

void TestWriteTerrain::anEndingIsLeftOut()
{
    const QTemporaryDir folder;
    MadeSource source(hills());
    NoProgress progress;
    TerrainRequest wanted = request(folder);
    wanted.out = folder.filePath("a.b.zph");
    QVERIFY(writeTerrain(source, wanted, progress));
    QVERIFY(entries(folder).contains("a.b.zph"));
    QVERIFY(entries(folder).contains("a.b_elevation.pgw"));
}

QTEST_GUILESS_MAIN(TestWriteTerrain)
#include "test_writeterrain.moc"
