// What cannot be read is told in a sentence that names it, and what takes long is
// stopped.
#include "geodata/compare.h"
#include "geodata/geodata.h"
#include "geodata/geofile.h"
#include "terrain/colourfile.h"
#include "terrain/maketexture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

#include <sys/stat.h>
#include <unistd.h>

class TestBadTerrain : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aFileThatCannotBeReadIsTold_data();
    void aFileThatCannotBeReadIsTold();
    void pipesAndDevicesAreTold();
    void aFileThatIsCutOffIsTold();
    void whatIsCutOffIsNoZeros_data();
    void whatIsCutOffIsNoZeros();
    void aTransformOfNoUseIsLeftOut_data();
    void aTransformOfNoUseIsLeftOut();
    void metresUnderASystemOfDegreesStayMetres();
    void foldersAndArchivesAreOpened();
    void requestsThatCannotBeMetAreTold_data();
    void requestsThatCannotBeMetAreTold();
    void hugeSparseFilesAreSeenAtOnce();
    void everythingStops();
    void holesAreFilled();
    void photographsLieOnTheGrid();

private:
    [[nodiscard]] QString at(const QString &name) const
    {
        return m_folder->filePath(name);
    }
    void writeText(const QString &name, const QByteArray &text) const;
    [[nodiscard]] GeoFile written(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

// Ends the work at a step, and tells how long it took to end.
class StopAt final : public Progress {
public:
    explicit StopAt(int steps) : m_left(steps) {}
    [[nodiscard]] bool step(qint64, qint64) override
    {
        if (m_left > 0 && --m_left == 0)
            m_since.start();
        return m_left > 0;
    }
    [[nodiscard]] bool wasAsked() const { return m_since.isValid(); }

private:
    int m_left;
    QElapsedTimer m_since;
};

Result<std::unique_ptr<Terrain>> opened(const QString &file)
{
    NoProgress progress;
    return makeGeodata()->open({file}, {}, progress);
}

} // namespace

void TestBadTerrain::init() { m_folder = std::make_unique<QTemporaryDir>(); }

void TestBadTerrain::writeText(const QString &name, const QByteArray &text) const
{
    QFile file(at(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

GeoFile TestBadTerrain::written(const QString &name) const
{
    GeoFile file;
    file.name = at(name);
    if (!write(file))
        qFatal("cannot write");
    return file;
}

void TestBadTerrain::aFileThatCannotBeReadIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing there") << "nothing.tif" << QByteArray();
    QTest::newRow("empty") << "empty.tif" << QByteArray("");
    QTest::newRow("text") << "text.tif" << QByteArray("These are no heights.\n");
    QTest::newRow("head alone") << "head.tif" << QByteArray("II*\0\x08\0\0\0", 8);
    QTest::newRow("points nowhere")
        << "nowhere.vrt"
        << QByteArray("<VRTDataset rasterXSize=\"5\" rasterYSize=\"5\"><VRTRasterBand "
                      "dataType=\"Int16\" band=\"1\"><SimpleSource><SourceFilename "
                      "relativeToVRT=\"1\">gone.tif</SourceFilename></SimpleSource>"
                      "</VRTRasterBand></VRTDataset>");
    QTest::newRow("points to another machine")
        << "far.vrt"
        << QByteArray("<VRTDataset rasterXSize=\"5\" rasterYSize=\"5\"><VRTRasterBand "
                      "dataType=\"Int16\" band=\"1\"><SimpleSource><SourceFilename>"
                      "/vsicurl/http://127.0.0.1:9/a.tif</SourceFilename></SimpleSource>"
                      "</VRTRasterBand></VRTDataset>");
    QTest::newRow("another machine") << "http://127.0.0.1:9/a.tif" << QByteArray();
    QTest::newRow("no archive") << "broken.zip" << QByteArray("PK\3\4 broken");
    QTest::newRow("enormous") << "enormous.hdr"
                              << QByteArray(
                                     "NROWS 2000000000\nNCOLS 2000000000\nNBITS 32\n");
}

void TestBadTerrain::aFileThatCannotBeReadIsTold()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    if (!text.isNull())
        writeText(name, text);
    const QString file = name.startsWith("http") ? name : at(name);
    QVERIFY(!makeGeodata()->canOpen(file) || name.endsWith(".vrt"));
    const auto terrain = opened(file);
    QString told = terrain ? QString() : terrain.error().text;
    if (terrain) { // a virtual raster tells when it is read
        NoProgress progress;
        const auto grid = (*terrain)->plan({});
        QVERIFY(grid);
        const auto heights = (*terrain)->heights(*grid, progress);
        QVERIFY(!heights);
        told = heights.error().text;
    }
    QVERIFY2(told.endsWith(u'.') && told.contains(name), qPrintable(told));
}

// Nobody waits for what may never come.
void TestBadTerrain::pipesAndDevicesAreTold()
{
    const QString pipe = at("pipe.tif");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    NoProgress progress;
    const auto isTold = [](const auto &result, const QString &text) {
        return !result && result.error().text == text;
    };
    for (const auto &[name, text] :
         {std::pair(pipe, QString("\"%1\" is a pipe, not a file.").arg(pipe)),
          std::pair(QString("/dev/zero"),
                    QString("\"/dev/zero\" is a device, not a file."))}) {
        QVERIFY(!makeGeodata()->canOpen(name));
        QVERIFY(isTold(opened(name), text));
        QVERIFY(isTold(makeGeodata()->track(name, {}, progress), text));
        OutputGrid grid;
        grid.size = {10, 10};
        QVERIFY(isTold(makeGeodata()->photoSize({name}, grid), text));
        QVERIFY(isTold(readColourFile(name), text));
        TextureFromElevation job;
        job.elevation = name;
        job.out = at("t.png");
        QVERIFY(isTold(makeTexture(job, progress), text));
    }
}

void TestBadTerrain::aFileThatIsCutOffIsTold()
{
    GeoFile file;
    file.name = at("cut.tif");
    file.size = {200, 300};
    file.options = QStringList{"COMPRESS=DEFLATE"};
    QVERIFY(write(file));
    QFile whole(file.name);
    const qint64 size = whole.size();
    for (qint64 length = size - 1; length > 0; length = length * 3 / 4) {
        QVERIFY(whole.resize(length));
        const auto terrain = opened(file.name);
        QString told = terrain ? QString() : terrain.error().text;
        if (terrain) {
            NoProgress progress;
            const auto grid = (*terrain)->plan({});
            QVERIFY(grid);
            const auto heights = (*terrain)->heights(*grid, progress);
            told = heights ? QStringLiteral("cut.tif reads.") : heights.error().text;
            QVERIFY2(!heights || length > size / 2, "half of a file is read as a whole");
        }
        QVERIFY2(told.contains("cut.tif") && told.endsWith(u'.'), qPrintable(told));
    }
}

void TestBadTerrain::whatIsCutOffIsNoZeros_data()
{
    QTest::addColumn<QByteArray>("driver");
    QTest::addColumn<QString>("name");
    QTest::newRow("NetCDF") << QByteArray("netCDF") << "cut.nc";
    QTest::newRow("ENVI") << QByteArray("ENVI") << "cut.img";
}

// Their readers give zeros for what is missing.
void TestBadTerrain::whatIsCutOffIsNoZeros()
{
    QFETCH(QByteArray, driver);
    QFETCH(QString, name);
    GeoFile file;
    file.name = at(name);
    file.driver = driver.constData();
    QVERIFY(write(file));
    QVERIFY(opened(file.name));
    QFile whole(file.name);
    const qint64 size = whole.size();
    for (const qint64 length : {size - 1, size / 2}) {
        QVERIFY(whole.resize(length));
        const auto terrain = opened(file.name);
        QVERIFY(!terrain);
        QVERIFY2(terrain.error().text.contains("cut off"),
                 qPrintable(terrain.error().text));
    }
}

void TestBadTerrain::aTransformOfNoUseIsLeftOut_data()
{
    QTest::addColumn<double>("cell");
    QTest::newRow("no size") << 0.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("enormous") << 1e300;
}

void TestBadTerrain::aTransformOfNoUseIsLeftOut()
{
    QFETCH(double, cell);
    GeoFile file;
    file.name = at("odd.tif");
    file.transform = {0.0, cell, 0.0, 0.0, 0.0, -1.0};
    QVERIFY(write(file));
    const auto terrain = opened(file.name);
    QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
    NoProgress progress;
    const auto grid = (*terrain)->plan({});
    QVERIFY2(grid, qPrintable(grid ? QString() : grid.error().text));
    const auto heights = (*terrain)->heights(*grid, progress);
    QVERIFY(heights);
    QCOMPARE(heights->size, file.size);
    QCOMPARE(heights->row(3)[5], float(hills(5, 3)));
    // A cell of no size is not written into the file to begin with.
    QVERIFY(cell == 0.0 || !(*terrain)->facts().notes.isEmpty());
}

void TestBadTerrain::metresUnderASystemOfDegreesStayMetres()
{
    GeoFile file;
    file.name = at("wrong.tif");
    file.crs = "EPSG:4326";
    QVERIFY(write(file));
    const auto terrain = opened(file.name);
    QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
    const auto grid = (*terrain)->plan({});
    QVERIFY2(grid, qPrintable(grid ? QString() : grid.error().text));
    QCOMPARE(grid->size, file.size);
    QCOMPARE(grid->metresX, 30.0);
    QCOMPARE(grid->metresY, 30.0);
    QVERIFY((*terrain)->facts().notes.join(u' ').contains("wrong.tif"));
}

void TestBadTerrain::foldersAndArchivesAreOpened()
{
    const auto source = makeGeodata();
    NoProgress progress;
    QVERIFY(QDir(m_folder->path()).mkpath("tiles/more"));
    QVERIFY(!source->canOpen(at("tiles")));
    const auto empty = source->open({at("tiles")}, {}, progress);
    QVERIFY(!empty && empty.error().text.contains("tiles"));
    const GeoFile one = written("tiles/one.tif");
    GeoFile two = one;
    two.name = at("tiles/more/two.tif");
    two.transform[0] += 64 * 30.0;
    QVERIFY(write(two));
    writeText("tiles/readme.txt", "These are tiles.\n");
    // A preview, and what lies beside rasters and looks like one.
    QVERIFY(QImage(8, 8, QImage::Format_Grayscale8).save(at("tiles/preview.png")));
    QVERIFY(QFile::copy(one.name, at("tiles/one.tif.ovr")));
    // A link that leads round in a circle.
    QVERIFY(QFile::link(at("tiles"), at("tiles/more/back")));
    QVERIFY(source->canOpen(at("tiles")));
    const auto folder = source->open({at("tiles")}, {}, progress);
    QVERIFY2(folder, qPrintable(folder ? QString() : folder.error().text));
    QCOMPARE((*folder)->facts().size, QSize(128, 48));
    QProcess zip;
    zip.setWorkingDirectory(m_folder->path());
    zip.start("python3", {"-m", "zipfile", "-c", "tiles.zip", "tiles/one.tif",
                          "tiles/more/two.tif"});
    if (!zip.waitForStarted())
        QSKIP("nothing here makes an archive");
    QVERIFY(zip.waitForFinished());
    QVERIFY(source->canOpen(at("tiles.zip")));
    const auto archive = source->open({at("tiles.zip")}, {}, progress);
    QVERIFY2(archive, qPrintable(archive ? QString() : archive.error().text));
    QCOMPARE((*archive)->facts().size, QSize(128, 48));
    if (geteuid() == 0)
        return; // who may read everything
    QVERIFY(QFile::setPermissions(one.name, {}));
    const auto closed = opened(one.name);
    QVERIFY(!closed && closed.error().text.contains("one.tif"));
}

void TestBadTerrain::requestsThatCannotBeMetAreTold_data()
{
    QTest::addColumn<QString>("crs");
    QTest::addColumn<QRect>("cells");
    QTest::addColumn<QSize>("size");
    QTest::newRow("unknown system") << "EPSG:999999" << QRect() << QSize();
    QTest::newRow("junk for a system") << "junk" << QRect() << QSize();
    QTest::newRow("heights alone") << "EPSG:5773" << QRect() << QSize();
    QTest::newRow("places in space") << "EPSG:4978" << QRect() << QSize();
    QTest::newRow("cells outside") << "keep" << QRect(100, 100, 5, 5) << QSize();
    QTest::newRow("too many cells") << "keep" << QRect() << QSize(2000000, 2000000);
    QTest::newRow("a system that is far away") << "EPSG:2193" << QRect() << QSize();
}

void TestBadTerrain::requestsThatCannotBeMetAreTold()
{
    QFETCH(QString, crs);
    QFETCH(QRect, cells);
    QFETCH(QSize, size);
    const auto terrain = opened(written("good.tif").name);
    QVERIFY(terrain);
    GridRequest request;
    request.crs = crs;
    if (!cells.isEmpty())
        request.cells = cells;
    if (!size.isEmpty())
        request.size = size;
    NoProgress progress;
    const auto grid = (*terrain)->plan(request);
    QString told = grid ? QString() : grid.error().text;
    if (grid) {
        const auto heights = (*terrain)->heights(*grid, progress);
        if (heights && QByteArray(QTest::currentDataTag()).startsWith("a system"))
            return; // warped as far as the system goes
        QVERIFY(!heights);
        told = heights.error().text;
    }
    QVERIFY2(told.endsWith(u'.') && told.size() > 20, qPrintable(told));
}

void TestBadTerrain::hugeSparseFilesAreSeenAtOnce()
{
    startGdal();
    char *options[] = {const_cast<char *>("SPARSE_OK=YES"),
                       const_cast<char *>("TILED=YES"), const_cast<char *>("BIGTIFF=YES"),
                       nullptr};
    {
        const Dataset made(GDALCreate(GDALGetDriverByName("GTiff"),
                                      at("sparse.tif").toUtf8().constData(), 100000,
                                      100000, 1, GDT_Int16, options));
        GeoTransform transform{0.0, 1.0, 0.0, 0.0, 0.0, -1.0};
        GDALSetGeoTransform(made.get(), transform.data());
        GDALRasterBandH band = GDALGetRasterBand(made.get(), 1);
        GDALSetRasterNoDataValue(band, -1.0);
        std::vector<qint16> cells(std::size_t(512) * 512, 700);
        QVERIFY(GDALRasterIO(band, GF_Write, 51200, 51200, 512, 512, cells.data(), 512,
                             512, GDT_Int16, 0, 0) == CE_None);
    }
    const auto terrain = opened(at("sparse.tif"));
    QVERIFY(terrain);
    NoProgress progress;
    const auto scan = (*terrain)->scan(progress);
    QVERIFY(scan && scan->isApproximate);
    QVERIFY(scan->range && scan->range->second == 700.0); // of the one part that it holds
    const auto grid = (*terrain)->plan({});
    QVERIFY(grid);
    QCOMPARE(grid->size, QSize(4096, 4096));
    const auto heights = (*terrain)->heights(*grid, progress);
    QVERIFY(heights);
    const auto range = rangeOf(*heights);
    QVERIFY(range && range->first == 700.0F && range->second == 700.0F);
    GridRequest part;
    part.cells = QRect(51000, 51000, 1000, 1000);
    const auto cut = (*terrain)->plan(part);
    QVERIFY(cut && cut->cells);
    const auto known = (*terrain)->heights(*cut, progress);
    QVERIFY(known);
    QCOMPARE(countVoids(*known), qint64(1000) * 1000 - 512 * 512);
}

void TestBadTerrain::everythingStops()
{
    GeoFile file;
    file.name = at("large.tif");
    file.size = {3000, 3000};
    file.crs = QStringLiteral("EPSG:4326");
    file.transform = {14.0, 0.0003, 0.0, 47.0, 0.0, -0.0003};
    file.options = QStringList{"TILED=YES"};
    QVERIFY(write(file));
    const auto terrain = opened(file.name);
    QVERIFY(terrain);
    StopAt opening(1);
    const auto none = makeGeodata()->open({file.name}, {}, opening);
    QVERIFY(!none && none.error().stopped);
    const auto grid = (*terrain)->plan({});
    QVERIFY(grid);
    for (const int steps : {1, 3}) {
        StopAt scanning(steps);
        const auto scan = (*terrain)->scan(scanning);
        QVERIFY(scan ? !scanning.wasAsked() : scan.error().stopped);
        StopAt warping(steps);
        const auto heights = (*terrain)->heights(*grid, warping);
        QVERIFY(warping.wasAsked() && !heights && heights.error().stopped);
        int left = steps;
        const auto seen = (*terrain)->overview(
            {1000, 1000}, [&](const Heights &, int, int) { return --left > 0; });
        QVERIFY(!seen && seen.error().stopped);
    }
}

void TestBadTerrain::holesAreFilled()
{
    constexpr float Void = std::numeric_limits<float>::quiet_NaN();
    Heights heights{{60, 50}, std::vector<float>(std::size_t(60) * 50)};
    for (int y = 0; y < 50; ++y)
        for (int x = 0; x < 60; ++x)
            heights.row(y)[x] = float(10 * x);
    for (int y = 20; y < 30; ++y)
        for (int x = 20; x < 30; ++x)
            heights.row(y)[x] = Void; // a hole
    for (int y = 0; y < 50; ++y)
        for (int x = 0; x < 4; ++x)
            heights.row(y)[x] = Void; // open to the edge
    const auto source = makeGeodata();
    NoProgress progress;
    Heights near = heights;
    const auto few = source->fillHoles(near, 2.0, progress);
    QVERIFY(few && *few > 0 && *few < 100);
    QVERIFY(std::isnan(near.row(25)[25]));
    const auto filled = source->fillHoles(heights, 100.0, progress);
    QVERIFY(filled);
    QCOMPARE(*filled, 100);
    QCOMPARE(countVoids(heights), 50 * 4);
    QVERIFY2(std::abs(heights.row(25)[25] - 250.0F) < 40.0F,
             qPrintable(QString::number(heights.row(25)[25])));
    QCOMPARE(heights.row(25)[35], 350.0F);
}

void TestBadTerrain::photographsLieOnTheGrid()
{
    const auto terrain = opened(written("under.tif").name);
    QVERIFY(terrain);
    const auto grid = (*terrain)->plan({});
    QVERIFY(grid);
    GeoFile photo;
    photo.name = at("photo.tif");
    photo.type = GDT_Byte;
    photo.size = {64, 96};
    photo.transform = {500000.0, 15.0, 0.0, 5000000.0, 0.0, -15.0};
    photo.height = [](int, int y) { return y < 48 ? 50.0 : 200.0; };
    QVERIFY(write(photo));
    const auto source = makeGeodata();
    NoProgress progress;
    const auto size = source->photoSize({photo.name}, *grid);
    QVERIFY(size);
    QCOMPARE(*size, QSize(128, 96)); // its own cells on the whole rectangle
    const auto picture = source->photo({photo.name}, *grid, *size, progress);
    QVERIFY2(picture, qPrintable(picture ? QString() : picture.error().text));
    QCOMPARE(picture->format(), QImage::Format_ARGB32); // it covers the western half
    QCOMPARE(picture->pixel(5, 5), qRgb(50, 50, 50));
    QCOMPARE(picture->pixel(60, 90), qRgb(200, 200, 200));
    QCOMPARE(qAlpha(picture->pixel(100, 50)), 0);
    QVERIFY(QImage(8, 8, QImage::Format_RGB32).save(at("plain.png")));
    const auto unplaced = source->photo({at("plain.png")}, *grid, *size, progress);
    QVERIFY(!unplaced && unplaced.error().text.contains("plain.png"));
    QVERIFY(source->projectionText(grid->crs).startsWith("PROJCS["));
    const auto places = source->geographic({{500000.0, 5000000.0}}, grid->crs);
    QVERIFY(places && std::abs(places->front().x() - 15.0) < 1e-6);
}

QTEST_GUILESS_MAIN(TestBadTerrain)
#include "test_badterrain.moc"
