#include "app/fileroad.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(FileLook)

class TestFileRoad : public QObject {
    Q_OBJECT

private slots:
    void nameAndHeadChooseTheRoad_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<FileLook>("look");
        QTest::addColumn<FileRoad>("alone");
        QTest::addColumn<FileRoad>("besideAScenery");
        const FileLook file;
        const auto row = [](const char *path, const FileLook &look, FileRoad alone,
                            FileRoad beside) {
            QTest::addRow("%s %d", path, look.tiff ? look.tiff->bits : 0)
                << QString(path) << look << alone << beside;
        };
        for (const char *path : {"a.zph", "a.ZPH", "a.bmp", "a.jpg", "a.png", "a.PNG",
                                 "a.ppm", "a.tga", "a.zip.png"})
            row(path, file, FileRoad::Open, FileRoad::Open);
        for (const char *path : {"a.hgt", "a.asc", "a.zip", "a.vrt", "a.tiff", "a.jpeg",
                                 "a.dem", "a", "a.xyz", "a.csv", "a.shp"})
            row(path, file, FileRoad::AskTerrain, FileRoad::AskTerrain);
        for (const char *path : {"a.gpx", "a.KML", "a.geojson"})
            row(path, file, FileRoad::Terrain, FileRoad::Track);
        for (const char *path : {"none.gpx", "none.tif", "none.hgt", ""})
            row(path, {false, false, {}}, FileRoad::Open, FileRoad::Open);
        row("folder", {true, true, {}}, FileRoad::AskTerrain, FileRoad::AskTerrain);
        row("folder.tif", {true, true, {}}, FileRoad::AskTerrain, FileRoad::AskTerrain);

        const auto tiff = [](const char *name, const TiffHead &head, FileRoad road) {
            QTest::newRow(name)
                << QString("a.TIF") << FileLook{true, false, head} << road << road;
        };
        tiff("a photograph", {8, false, false}, FileRoad::Open);
        tiff("a map", {8, false, true}, FileRoad::Terrain);
        tiff("16 bits", {16, false, false}, FileRoad::Terrain);
        tiff("floating", {32, true, false}, FileRoad::Terrain);
        tiff("black and white", {1, false, false}, FileRoad::Terrain);
        QTest::newRow("no head")
            << QString("a.tif") << file << FileRoad::Open << FileRoad::Open;
    }
    void nameAndHeadChooseTheRoad()
    {
        QFETCH(QString, path);
        QFETCH(FileLook, look);
        QFETCH(FileRoad, alone);
        QFETCH(FileRoad, besideAScenery);
        QCOMPARE(roadOf(path, look, false), alone);
        QCOMPARE(roadOf(path, look, true), besideAScenery);
    }

    void filesAreLookedAt()
    {
        const QTemporaryDir folder;
        const QString tiff = folder.filePath("a.tif");
        QVERIFY(QImage(3, 2, QImage::Format_Grayscale16).save(tiff));
        QCOMPARE(lookAt(tiff).tiff->bits, 16);
        QVERIFY(lookAt(tiff).exists);
        QVERIFY(lookAt(folder.path()).isFolder);
        QVERIFY(!lookAt(folder.filePath("none")).exists);
        QVERIFY(!lookAt("").exists);
    }
};

QTEST_MAIN(TestFileRoad)
#include "test_fileroad.moc"
