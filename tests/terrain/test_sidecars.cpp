#include "terrain/sidecars.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// What stands beside a picture and tells where it lies.
class TestSidecars : public QObject {
    Q_OBJECT

private slots:
    void namesGoWithThePicture();
    void worldFileTellsTheMiddleOfThePixel();
    void whatIsWrittenIsReadAgain();
    void filesOfOthersTellDegreesAndMetres();
    void withoutFilesNothingIsKnown();
    void aDamagedFileIsTold();
    void anotherSizeKeepsTheStretch();
    void gdalReadsThem();

private:
    static Georeference some()
    {
        Georeference place;
        place.transform = {409123.5, 30.0, 0.0, 5612345.25, 0.0, -30.0};
        place.crs = QStringLiteral(
            R"(PROJCS["a <zone> & more",GEOGCS["WGS 84",DATUM["WGS_1984",)"
            R"(SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],)"
            R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
            R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",15],)"
            R"(PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],)"
            R"(PARAMETER["false_northing",0],UNIT["metre",1]])");
        place.metresX = 30.0;
        place.metresY = 30.0;
        place.metresPerHeightUnit = 0.01;
        return place;
    }
    static bool write(const QString &name, const QByteArray &text)
    {
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    }
};

void TestSidecars::namesGoWithThePicture()
{
    QCOMPARE(worldFileName("/a.b/x_elevation.png"), QString("/a.b/x_elevation.pgw"));
    QCOMPARE(worldFileName("x.tif"), QString("x.tfw"));
    QCOMPARE(projectionFileName("x.png"), QString("x.prj"));
    QCOMPARE(auxiliaryFileName("x.png"), QString("x.png.aux.xml"));
}

void TestSidecars::worldFileTellsTheMiddleOfThePixel()
{
    QCOMPARE(worldFileText(some().transform),
             QByteArray("30\n0\n0\n-30\n409138.5\n5612330.25\n"));
}

void TestSidecars::whatIsWrittenIsReadAgain()
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("p.png");
    const Georeference place = some();
    QVERIFY(write(auxiliaryFileName(picture), auxiliaryFileText(place)));
    const Result<Georeference> read = readSidecars(picture, {10, 10});
    QVERIFY(read);
    QCOMPARE(read->transform, place.transform);
    QCOMPARE(read->crs, place.crs);
    QCOMPARE(read->metresX, 30.0);
    QCOMPARE(read->metresPerHeightUnit.value_or(0.0), 0.01);
}

void TestSidecars::filesOfOthersTellDegreesAndMetres()
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("p.png");
    QVERIFY(write(worldFileName(picture), "20\n0\n0\n-25\n1010\n2000\n"));
    const Result<Georeference> metres = readSidecars(picture, {10, 10});
    QVERIFY(metres);
    QCOMPARE(metres->transform[0], 1000.0);
    QCOMPARE(metres->transform[3], 2012.5);
    QCOMPARE(metres->metresX, 20.0);
    QCOMPARE(metres->metresY, 25.0);
    QVERIFY(!metres->metresPerHeightUnit);

    QVERIFY(write(auxiliaryFileName(picture),
                  "<PAMDataset><SRS>GEOGCS[\"WGS 84\"]</SRS>"
                  "<GeoTransform>10, 0.001, 0, 60.005, 0, -0.001</GeoTransform>"
                  "<PAMRasterBand band=\"1\"><Metadata><MDI key=\"MetresPerHeightUnit\">5"
                  "</MDI></Metadata></PAMRasterBand></PAMDataset>"));
    const Result<Georeference> degrees = readSidecars(picture, {10, 10});
    QVERIFY(degrees);
    QVERIFY(std::abs(degrees->metresX - 55.66) < 0.01);
    QVERIFY(std::abs(degrees->metresY - 111.32) < 0.01);
    QVERIFY(!degrees->metresPerHeightUnit);
}

void TestSidecars::withoutFilesNothingIsKnown()
{
    const QTemporaryDir folder;
    const Result<Georeference> read = readSidecars(folder.filePath("p.png"), {10, 10});
    QVERIFY(read);
    QCOMPARE(read->metresX, 0.0);
    QCOMPARE(read->transform, GeoTransform{});
}

void TestSidecars::aDamagedFileIsTold()
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("p.png");
    QVERIFY(write(worldFileName(picture), "twenty\n"));
    QVERIFY(readSidecars(picture, {10, 10}));
    const QByteArray whole = auxiliaryFileText(some());
    for (const qsizetype length : {qsizetype(0), qsizetype(5), whole.size() / 2}) {
        QVERIFY(write(auxiliaryFileName(picture), whole.left(length)));
        const Result<Georeference> read = readSidecars(picture, {10, 10});
        QVERIFY(!read);
        QVERIFY(read.error().text.contains(auxiliaryFileName(picture)));
    }
}

void TestSidecars::anotherSizeKeepsTheStretch()
{
    OutputGrid grid;
    grid.size = {100, 50};
    grid.transform = {1000.0, 10.0, 0.0, 2000.0, 0.0, -20.0};
    grid.metresX = 10.0;
    grid.metresY = 20.0;
    const Georeference place = georeferenceOf(grid, {200, 25});
    QCOMPARE(place.transform, (GeoTransform{1000.0, 5.0, 0.0, 2000.0, 0.0, -40.0}));
    QCOMPARE(place.metresX, 5.0);
    QCOMPARE(place.metresY, 40.0);
}

void TestSidecars::gdalReadsThem()
{
    const QString gdalinfo = QStandardPaths::findExecutable("gdalinfo");
    if (gdalinfo.isEmpty())
        QSKIP("There is no gdalinfo to read them.");
    const QTemporaryDir folder;
    const QString picture = folder.filePath("p.png");
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(Qt::black);
    QVERIFY(image.save(picture));
    const Georeference place = some();
    QVERIFY(write(auxiliaryFileName(picture), auxiliaryFileText(place)));
    QProcess process;
    process.start(gdalinfo, {"-json", picture});
    QVERIFY(process.waitForFinished() && process.exitCode() == 0);
    const QJsonObject told =
        QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    const QJsonArray transform = told["geoTransform"].toArray();
    for (int i = 0; i < 6; ++i)
        QCOMPARE(transform[i].toDouble(), place.transform[std::size_t(i)]);
    QVERIFY(told["coordinateSystem"].toObject()["wkt"].toString().contains("<zone>"));
    QCOMPARE(told["metadata"].toObject()[""].toObject()["MetresPerHeightUnit"].toString(),
             QString("0.01"));
}

QTEST_GUILESS_MAIN(TestSidecars)
#include "test_sidecars.moc"
