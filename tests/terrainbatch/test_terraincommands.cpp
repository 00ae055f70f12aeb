#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <csignal>

namespace {

constexpr int Patience = 120000; // ms

struct Run {
    int status = -1;
    QString out;
    QString err;
};

} // namespace

/// info, open and texture of the program as its user sees them.
class TestTerrainCommands : public QObject {
    Q_OBJECT

private slots:
    void init();
    void infoTellsWhatAFileHolds();
    void openMakesAScenery();
    void everyOptionOfOpenIsTaken();
    void openKeepsItsHeights();
    void textureReadsWhatOpenWrote();
    void wrongUsageIsStatusTwo_data();
    void wrongUsageIsStatusTwo();
    void failuresAreStatusOne_data();
    void failuresAreStatusOne();
    void aStopLeavesNothing();
    void helpTellsRangesAndDefaults();

private:
    [[nodiscard]] Run run(const QStringList &arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(TERRAIN_PROGRAM, arguments);
        process.waitForFinished(Patience);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    void writeGrid(const QString &name, int columns, int rows) const
    {
        QFile file(m_folder->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QByteArray text = "ncols " + QByteArray::number(columns) + "\nnrows " +
                          QByteArray::number(rows) +
                          "\nxllcorner 500000\nyllcorner 5200000\ncellsize 20\n"
                          "NODATA_value -9999\n";
        for (int y = 0; y < rows; ++y) {
            for (int x = 0; x < columns; ++x)
                text +=
                    x == 5 && y == 6
                        ? "-9999 "
                        : QByteArray::number(
                              300 + 80 * std::sin(x * 0.1) * std::cos(y * 0.1), 'f', 2) +
                              ' ';
            text += '\n';
        }
        QCOMPARE(file.write(text), text.size());
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    static QJsonObject objectOf(const QString &text)
    {
        return QJsonDocument::fromJson(text.toUtf8()).object();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestTerrainCommands::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    writeGrid("dem.asc", 80, 60);
}

void TestTerrainCommands::infoTellsWhatAFileHolds()
{
    const Run told = run({"info", "--json", "dem.asc"});
    QCOMPARE(told.status, 0);
    const QJsonObject object = objectOf(told.out);
    for (const char *const key : {"file", "columns", "rows", "cellX", "cellY", "crs",
                                  "unit", "minimum", "maximum", "voids", "type",
                                  "pointsRead", "pointsUsed", "cut", "overlaps", "gaps"})
        QVERIFY2(object.contains(key), key);
    QCOMPARE(object["columns"].toInt(), 80);
    QCOMPARE(object["rows"].toInt(), 60);
    QCOMPARE(object["cellX"].toDouble(), 20.0);
    QCOMPARE(object["voids"].toInt(), 1);
    QVERIFY(std::abs(object["minimum"].toDouble() - 220.0) < 0.5);
    const Run text = run({"info", "dem.asc"});
    QVERIFY(text.out.contains("\ncolumns: 80\n"));
}

void TestTerrainCommands::openMakesAScenery()
{
    const Run made = run({"open", "dem.asc", "--out", "t", "--json"});
    QVERIFY2(made.status == 0, qPrintable(made.err));
    const QJsonObject object = objectOf(made.out);
    QCOMPARE(object["unit"].toDouble(), 0.01);
    QCOMPARE(object["voids"].toInt(), 1);
    const QStringList files = entries();
    for (const char *const name :
         {"t.zph", "t_elevation.png", "t_elevation.pgw", "t_elevation.png.aux.xml",
          "t_texture.png", "t_texture.pgw", "t_texture.png.aux.xml"})
        QVERIFY2(files.contains(name), name);
    QFile scenery(m_folder->filePath("t.zph"));
    QVERIFY(scenery.open(QIODevice::ReadOnly));
    QVERIFY(scenery.readAll().endsWith("\n\n[Extras]\nMetresPerUnit=20\n"));
}

void TestTerrainCommands::everyOptionOfOpenIsTaken()
{
    const Run made = run({"open",    "dem.asc",        "--out",       "t",
                          "--json",  "--cells",        "10,10,40,30", "--size",
                          "20x15",   "--crs",          "keep",        "--resample",
                          "average", "--fill",         "none",        "--unit",
                          "0.5",     "--exaggerate",   "2.5",         "--palette",
                          "autumn",  "--texture-size", "64x48",       "--shade",
                          "sky",     "--sun",          "300,25",      "--quiet"});
    QVERIFY2(made.status == 0, qPrintable(made.err));
    const QJsonObject object = objectOf(made.out);
    QCOMPARE(object["columns"].toInt(), 20);
    QCOMPARE(object["rows"].toInt(), 15);
    QCOMPARE(object["cellX"].toDouble(), 40.0);
    QCOMPARE(object["unit"].toDouble(), 0.5);
    QCOMPARE(QImage(m_folder->filePath("t_texture.png")).size(), QSize(64, 48));
    QVERIFY(made.err.isEmpty());
}

void TestTerrainCommands::openKeepsItsHeights()
{
    QCOMPARE(run({"open", "dem.asc", "--out", "t", "--fill", "none"}).status, 0);
    const QImage image(m_folder->filePath("t_elevation.png"));
    QCOMPARE(image.size(), QSize(80, 60));
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 80; ++x) {
            if (x == 5 && y == 6)
                continue;
            const double metres = 300 + 80 * std::sin(x * 0.1) * std::cos(y * 0.1);
            const int steps = int(image.pixel(x, y) & 0xFFFFFFu);
            QVERIFY(std::abs(steps * 0.01 - metres) < 0.0101);
        }
    }
}

void TestTerrainCommands::textureReadsWhatOpenWrote()
{
    QCOMPARE(run({"open", "dem.asc", "--out", "t"}).status, 0);
    const Run made = run({"texture", "t_elevation.png", "--out", "sun.png", "--json"});
    QVERIFY2(made.status == 0, qPrintable(made.err));
    QCOMPARE(objectOf(made.out)["cellX"].toDouble(), 20.0);
    QCOMPARE(objectOf(made.out)["unit"].toDouble(), 0.01);
    QCOMPARE(run({"texture", "t_elevation.png", "--out", "plain.png", "--shade", "none"})
                 .status,
             0);
    QCOMPARE(QImage(m_folder->filePath("plain.png")),
             QImage(m_folder->filePath("t_texture.png")));
    QVERIFY(QImage(m_folder->filePath("sun.png")) !=
            QImage(m_folder->filePath("plain.png")));
}

void TestTerrainCommands::wrongUsageIsStatusTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const QStringList &more, const char *named) {
        QTest::newRow(name) << QStringList{"open", "dem.asc", "--out", "t"} + more
                            << named;
    };
    row("no such option", {"--palete", "grey"}, "--palete");
    row("a unit of nothing", {"--unit", "0"}, "--unit");
    row("a decimal comma", {"--unit", "0,5"}, "--unit");
    row("a sun beyond the horizon", {"--sun", "225,91"}, "--sun");
    row("an azimuth beyond the circle", {"--sun", "361,40"}, "--sun");
    row("no distance", {"--fill", "far"}, "--fill");
    row("two parts", {"--cells", "0,0,5,5", "--rect", "0,0,5,5"}, "--");
    row("a part of nothing", {"--cells", "0,0,0,5"}, "--cells");
    row("a part inside out", {"--rect", "5,0,0,5"}, "--rect");
    row("no size", {"--size", "0x5"}, "--size");
    row("no light", {"--shade", "moon"}, "--shade");
    row("two equal columns", {"--columns", "1,2,1"}, "--columns");
    row("no exaggeration", {"--exaggerate", "0"}, "--exaggerate");
    QTest::newRow("no name") << QStringList{"open", "dem.asc"} << "--out";
    QTest::newRow("read and written")
        << QStringList{"texture", "dem.asc", "--out", "dem.asc"} << "dem.asc";
}

void TestTerrainCommands::wrongUsageIsStatusTwo()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const QStringList before = entries();
    const Run told = run(arguments);
    QCOMPARE(told.status, 2);
    QVERIFY2(told.err.contains(named), qPrintable(told.err));
    QVERIFY(told.out.isEmpty());
    QCOMPARE(entries(), before);
}

void TestTerrainCommands::failuresAreStatusOne_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const QStringList &more, const char *named) {
        QTest::newRow(name) << QStringList{"open", "dem.asc", "--out", "t"} + more
                            << named;
    };
    row("a rectangle outside", {"--rect", "0,0,10,10"}, "");
    row("cells outside", {"--cells", "100,100,20,20"}, "");
    row("an unknown code", {"--crs", "EPSG:999999"}, "999999");
    row("an unknown palette", {"--palette", "alpin"}, "alpin");
    row("no photograph", {"--photo", "none.tif"}, "none.tif");
    QTest::newRow("no file") << QStringList{"open", "none.tif", "--out", "t"}
                             << "none.tif";
    QTest::newRow("nothing to tell of") << QStringList{"info", "none.tif"} << "none.tif";
    QTest::newRow("no folder") << QStringList{"open", "dem.asc", "--out", "no/t"}
                               << "no/t";
    QTest::newRow("no elevation file")
        << QStringList{"texture", "none.png", "--out", "t.png"} << "none.png";
}

void TestTerrainCommands::failuresAreStatusOne()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const QStringList before = entries();
    const Run told = run(arguments);
    QCOMPARE(told.status, 1);
    QVERIFY2(!told.err.isEmpty() && told.err.contains(named), qPrintable(told.err));
    QVERIFY(told.out.isEmpty());
    QCOMPARE(entries(), before);
}

void TestTerrainCommands::aStopLeavesNothing()
{
    writeGrid("large.asc", 900, 900);
    const QStringList before = entries();
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.start(TERRAIN_PROGRAM, {"open", "large.asc", "--out", "t", "--size",
                                    "6000x6000", "--shade", "sky"});
    // Its first word of how far it is comes long before the end.
    process.setReadChannel(QProcess::StandardError);
    QVERIFY(process.waitForReadyRead(Patience));
    QCOMPARE(process.state(), QProcess::Running);
    ::kill(pid_t(process.processId()), SIGTERM);
    QVERIFY(process.waitForFinished(Patience));
    QCOMPARE(process.exitCode(), 130);
    QCOMPARE(entries(), before);
}

void TestTerrainCommands::helpTellsRangesAndDefaults()
{
    const Run help = run({"open", "--help"});
    QCOMPARE(help.status, 0);
    for (const char *const text :
         {"--rect",         "--cells",   "--size",       "--crs",      "--resample",
          "--fill",         "--unit",    "--exaggerate", "--palette",  "--photo",
          "--texture-size", "--shade",   "--sun",        "--points",   "--columns",
          "--separator",    "--decimal", "--skip",       "--max-edge", "225,40",
          "temperate",      "volcanic"})
        QVERIFY2(help.out.contains(text), text);
}

QTEST_GUILESS_MAIN(TestTerrainCommands)
#include "test_terraincommands.moc"
