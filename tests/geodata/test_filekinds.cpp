// Every kind of file that people have, written here and read as GDAL's own programs do.
#include "geodata/compare.h"
#include "geodata/geodata.h"
#include "geodata/geofile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

Q_DECLARE_METATYPE(GeoFile)

class TestFileKinds : public QObject {
    Q_OBJECT

private slots:
    void aKindIsReadAsGdalDoes_data();
    void aKindIsReadAsGdalDoes();
    void theMostSignificantByteMayComeFirst();
    void exponentsMayBeWrittenWithD();
    void tilesOverlap();
    void tilesOfOtherGridsAndSystemsJoin();
    void tilesJoinAcrossTheMeridian();
    void unitsScaleAndOffsetMakeMetres();
    void aMaskTellsVoids();
    void voidsThatAreNotToldAreFound();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr double Arcsecond = 1.0 / 3600.0;

std::unique_ptr<Terrain> opened(const QStringList &files)
{
    NoProgress progress;
    auto terrain = makeGeodata()->open(files, {}, progress);
    if (!terrain)
        qWarning().noquote() << terrain.error().text;
    return terrain ? std::move(*terrain) : nullptr;
}

Heights heightsOf(Terrain &terrain, const GridRequest &request,
                  OutputGrid *used = nullptr)
{
    NoProgress progress;
    const auto grid = terrain.plan(request);
    if (!grid) {
        qWarning().noquote() << grid.error().text;
        return {};
    }
    if (used)
        *used = *grid;
    const auto heights = terrain.heights(*grid, progress);
    if (!heights)
        qWarning().noquote() << heights.error().text;
    return heights ? *heights : Heights();
}

bool watched(const Heights &, int, int) { return true; }

GridRequest kept()
{
    GridRequest request;
    request.crs = QStringLiteral("keep");
    return request;
}

void writeText(const QString &name, const QByteArray &text)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

GeoFile named(const QString &name)
{
    GeoFile file;
    file.name = name;
    return file;
}

GeoFile inDegrees(const QString &name, double west, double north, double cell)
{
    GeoFile file = named(name);
    file.crs = QStringLiteral("EPSG:4326");
    file.transform = {west, cell, 0.0, north, 0.0, -cell};
    return file;
}

// Cells of a survey whose outermost points lie on whole degrees.
GeoFile ofSurvey(const QString &name, const char *driver, int west, int north)
{
    constexpr int Points = 1201;
    constexpr double Step = 1.0 / 1200.0;
    GeoFile file = inDegrees(name, west - Step / 2.0, north + Step / 2.0, Step);
    file.driver = driver;
    file.size = {Points, Points};
    file.type = GDT_Int16;
    return file;
}

// Of 24 characters, with the exponent that Fortran writes.
QByteArray fortran(double value)
{
    return QByteArray::number(value, 'E', 15).replace('E', 'D').rightJustified(24);
}

QByteArray whole(int value) { return QByteArray::number(value).rightJustified(6); }

// A survey of the kind that the geological survey handed out: profiles from the south.
QByteArray profiles(int columns, int rows, const QByteArray &resolution)
{
    constexpr double West = 499980.0;
    constexpr double South = 4999980.0;
    const double east = West + 30.0 * (columns - 1);
    const double north = South + 30.0 * (rows - 1);
    QByteArray head = QByteArray("A SURVEY").leftJustified(144);
    head += whole(1) + whole(1) + whole(1) + whole(10);
    for (int i = 0; i < 15; ++i)
        head += fortran(0.0);
    head += whole(2) + whole(2) + whole(4);
    for (const double corner : {West, South, West, north, east, north, east, South})
        head += fortran(corner);
    head += fortran(0.0) + fortran(3000.0) + fortran(0.0) + whole(0) + resolution +
            whole(1) + whole(columns);
    QByteArray text = head.leftJustified(1024);
    for (int column = 0; column < columns; ++column) {
        QByteArray profile = whole(1) + whole(column + 1) + whole(rows) + whole(1) +
                             fortran(West + 30.0 * column) + fortran(South) +
                             fortran(0.0) + fortran(0.0) + fortran(3000.0);
        for (int row = 0; row < rows; ++row)
            profile += whole(static_cast<int>(hills(column, rows - 1 - row)));
        text += profile.leftJustified(1024);
    }
    return text;
}

} // namespace

void TestFileKinds::aKindIsReadAsGdalDoes_data()
{
    QTest::addColumn<GeoFile>("file");
    const auto row = [](const char *name, const GeoFile &file) {
        QTest::newRow(name) << file;
    };
    GeoFile file = named("float.tif");
    row("Float32", file);
    file.options = QStringList{"TILED=YES", "BLOCKXSIZE=16", "BLOCKYSIZE=16"};
    row("tiled", file);
    file.options = QStringList{"COMPRESS=LZW", "PREDICTOR=3"};
    row("LZW", file);
    file.options.clear();
    for (const GDALDataType type :
         {GDT_Byte, GDT_UInt16, GDT_Int16, GDT_UInt32, GDT_Int32, GDT_Float64}) {
        file.type = type;
        file.height = [type](int x, int y) {
            return type == GDT_Byte ? hills(x, y) / 10.0 : hills(x, y);
        };
        QTest::addRow("numbers of kind %d", int(type)) << file;
    }
    file = named("voids.tif");
    file.noData = -9999.0;
    file.height = [](int x, int y) { return x % 9 + y % 7 < 3 ? -9999.0 : hills(x, y); };
    row("voids", file);
    file.type = GDT_Float64;
    row("voids in wide numbers", file);
    row("Arc/Info grid", [&] {
        GeoFile grid = named("grid.asc");
        grid.driver = "AAIGrid";
        return grid;
    }());
    row("shuttle mission", ofSurvey("N46E014.hgt", "SRTMHGT", 14, 47));
    row("DTED", ofSurvey("dted.dt1", "DTED", 14, 47));
    file = inDegrees("net.nc", 14.0, 47.0, 0.01);
    file.driver = "netCDF";
    row("NetCDF", file);
    file = named("commas.xyz");
    file.driver = "XYZ";
    file.options = QStringList{"COLUMN_SEPARATOR=,"};
    row("points with commas", file);
    file = named("rotated.tif");
    file.transform = {500000.0, 26.0, 15.0, 5000000.0, 15.0, -26.0};
    row("rotated", file);
    file = named("upward.tif");
    file.transform = {500000.0, 30.0, 0.0, 5000000.0, 0.0, 30.0};
    row("rows run northward", file);
    file = named("nowhere.tif");
    file.crs.clear();
    row("no reference system", file);
    file.size = {1, 1};
    row("one cell", file);
    row("degrees", inDegrees("degrees.tif", 14.0, 47.0, 3.0 * Arcsecond));
    row("across the 180th meridian",
        inDegrees("meridian.tif", 179.97, 52.0, 3.0 * Arcsecond));
    row("near the north pole", inDegrees("north.tif", 20.0, 89.96, 3.0 * Arcsecond));
    row("near the south pole", inDegrees("south.tif", 20.0, -86.0, 30.0 * Arcsecond));
}

void TestFileKinds::aKindIsReadAsGdalDoes()
{
    QFETCH(GeoFile, file);
    file.name = m_folder.filePath(file.name);
    QVERIFY(write(file));
    const auto terrain = opened({file.name});
    QVERIFY(terrain);
    QCOMPARE(terrain->facts().size, file.size);
    OutputGrid grid;
    for (const GridRequest &request : {GridRequest(), kept()}) {
        const Heights heights = heightsOf(*terrain, request, &grid);
        const Difference found =
            differenceOf(heights, judgedByWarp({file.name}, argumentsFor(grid)));
        QVERIFY2(found.isSmall(), qPrintable(found.told()));
        if (grid.cells) {
            const Difference plain =
                differenceOf(heights, judgedByTranslate(file.name, {}));
            QVERIFY2(plain.isNone(), qPrintable(plain.told()));
        }
    }
    NoProgress progress;
    const auto scan = terrain->scan(progress);
    QVERIFY(scan && scan->range);
    QVERIFY(!scan->isApproximate);
    const auto seen = terrain->overview({40, 40}, watched);
    QVERIFY(seen && seen->size.boundedTo({40, 40}) == seen->size);
}

void TestFileKinds::theMostSignificantByteMayComeFirst()
{
    constexpr int Columns = 30;
    constexpr int Rows = 20;
    QByteArray cells;
    for (int y = 0; y < Rows; ++y)
        for (int x = 0; x < Columns; ++x) {
            const quint16 cell = qToBigEndian(quint16(hills(x, y)));
            cells.append(reinterpret_cast<const char *>(&cell), 2);
        }
    writeText(m_folder.filePath("first.bil"), cells);
    writeText(m_folder.filePath("first.hdr"),
              "NROWS 20\nNCOLS 30\nNBANDS 1\nNBITS 16\nPIXELTYPE SIGNEDINT\n"
              "BYTEORDER msbfirst\nULXMAP 14.0\nULYMAP 47.0\nXDIM 0.01\nYDIM 0.01\n"
              "NODATA -9999\n");
    const auto terrain = opened({m_folder.filePath("first.bil")});
    QVERIFY(terrain);
    const Heights heights = heightsOf(*terrain, kept());
    QCOMPARE(heights.size, QSize(Columns, Rows));
    QCOMPARE(heights.row(7)[11], float(hills(11, 7)));
}

void TestFileKinds::exponentsMayBeWrittenWithD()
{
    const QString name = m_folder.filePath("survey.dem");
    writeText(name, profiles(20, 30, " .300000D+02 .300000D+02 .100000D+01"));
    const auto terrain = opened({name});
    QVERIFY(terrain);
    QCOMPARE(terrain->facts().size, QSize(20, 30));
    const Heights heights = heightsOf(*terrain, kept());
    const Difference found = differenceOf(heights, judgedByTranslate(name, {}));
    QVERIFY2(found.isNone(), qPrintable(found.told()));
    QCOMPARE(heights.row(4)[7], float(hills(7, 4)));
}

void TestFileKinds::tilesOverlap()
{
    GeoFile west = named(m_folder.filePath("west.tif"));
    GeoFile east = named(m_folder.filePath("east.tif"));
    east.transform[0] += 30.0 * 54; // ten columns of the western tile
    east.transform[3] -= 30.0 * 6;
    east.height = [](int x, int y) { return hills(x, y) + 100.0; };
    QVERIFY(write(west) && write(east));
    const auto terrain = opened({west.name, east.name});
    QVERIFY(terrain);
    QCOMPARE(terrain->facts().size, QSize(118, 54));
    QCOMPARE(terrain->facts().overlaps, qint64(10) * 42);
    QCOMPARE(terrain->facts().gaps, qint64(118) * 54 - 2 * 64 * 48 + 10 * 42);
    OutputGrid grid;
    const Heights plain = heightsOf(*terrain, kept(), &grid);
    QVERIFY(grid.cells);
    const Difference found =
        differenceOf(plain, judgedByWarp({west.name, east.name}, argumentsFor(grid)));
    QVERIFY2(found.isNone(), qPrintable(found.told()));
    GridRequest request;
    request.crs = QStringLiteral("EPSG:32634");
    const Heights warped = heightsOf(*terrain, request, &grid);
    const Difference other =
        differenceOf(warped, judgedByWarp({west.name, east.name}, argumentsFor(grid)));
    QVERIFY2(other.isSmall(), qPrintable(other.told()));
}

void TestFileKinds::tilesOfOtherGridsAndSystemsJoin()
{
    const GeoFile metres = named(m_folder.filePath("metres.tif"));
    const GeoFile degrees =
        inDegrees(m_folder.filePath("beside.tif"), 15.02, 45.16, 3.0 * Arcsecond);
    GeoFile between = named(m_folder.filePath("between.tif"));
    between.transform[0] += 1000.0;
    QVERIFY(write(metres) && write(degrees) && write(between));
    const QStringList files{metres.name, degrees.name, between.name};
    const auto terrain = opened(files);
    QVERIFY(terrain);
    OutputGrid grid;
    const Heights heights = heightsOf(*terrain, {}, &grid);
    const Difference found =
        differenceOf(heights, judgedByWarp(files, argumentsFor(grid)));
    QVERIFY2(found.isSmall(), qPrintable(found.told()));
    GridRequest part;
    part.cells = QRect(5, 5, 30, 20);
    QCOMPARE(heightsOf(*terrain, part).size, QSize(30, 20));
    const auto seen = terrain->overview({40, 40}, watched);
    QVERIFY(seen && rangeOf(*seen));
}

void TestFileKinds::tilesJoinAcrossTheMeridian()
{
    const double cell = 3.0 * Arcsecond;
    const GeoFile east =
        inDegrees(m_folder.filePath("e.tif"), 180.0 - 64 * cell, 52.0, cell);
    const GeoFile west = inDegrees(m_folder.filePath("w.tif"), -180.0, 52.0, cell);
    QVERIFY(write(east) && write(west));
    const auto terrain = opened({east.name, west.name});
    QVERIFY(terrain);
    QCOMPARE(terrain->facts().size, QSize(128, 48));
    QCOMPARE(terrain->facts().gaps, 0);
    const Heights heights = heightsOf(*terrain, {});
    QVERIFY(heights.size.width() < 200);
    const qint64 cells = qint64(heights.metres.size());
    QVERIFY(countVoids(heights) * 10 < cells);
}

void TestFileKinds::unitsScaleAndOffsetMakeMetres()
{
    GeoFile file = named(m_folder.filePath("feet.tif"));
    file.type = GDT_Int16;
    file.noData = -32768.0;
    file.height = [](int x, int y) { return x == 3 ? -32768.0 : hills(x, y); };
    file.more = [](GDALDatasetH made) {
        GDALRasterBandH band = GDALGetRasterBand(made, 1);
        GDALSetRasterUnitType(band, "ft");
        GDALSetRasterScale(band, 0.5);
        GDALSetRasterOffset(band, 100.0);
    };
    QVERIFY(write(file));
    const auto terrain = opened({file.name});
    QVERIFY(terrain);
    QCOMPARE(terrain->facts().unit, QStringLiteral("ft"));
    const Heights heights = heightsOf(*terrain, {});
    QVERIFY(std::isnan(heights.row(5)[3]));
    QCOMPARE(heights.row(5)[9], float((hills(9, 5) * 0.5 + 100.0) * 0.3048));
    GridRequest smaller;
    smaller.size = QSize(32, 24);
    const auto range = rangeOf(heightsOf(*terrain, smaller));
    QVERIFY(range && range->second < 1000.0F * 0.5F); // in metres too
}

void TestFileKinds::aMaskTellsVoids()
{
    GeoFile file = named(m_folder.filePath("masked.tif"));
    file.more = [](GDALDatasetH made) {
        GDALRasterBandH band = GDALGetRasterBand(made, 1);
        QVERIFY(GDALCreateMaskBand(band, GMF_PER_DATASET) == CE_None);
        QByteArray seen(64 * 48, '\xff');
        seen[5 * 64 + 7] = '\0';
        QVERIFY(GDALRasterIO(GDALGetMaskBand(band), GF_Write, 0, 0, 64, 48, seen.data(),
                             64, 48, GDT_Byte, 0, 0) == CE_None);
    };
    QVERIFY(write(file));
    const auto terrain = opened({file.name});
    QVERIFY(terrain);
    const Heights heights = heightsOf(*terrain, {});
    QCOMPARE(countVoids(heights), 1);
    QVERIFY(std::isnan(heights.row(5)[7]));
    GridRequest larger;
    larger.size = QSize(128, 96);
    QVERIFY(countVoids(heightsOf(*terrain, larger)) >= 1);
}

void TestFileKinds::voidsThatAreNotToldAreFound()
{
    GeoFile file = named(m_folder.filePath("untold.tif"));
    file.type = GDT_Int16;
    file.height = [](int x, int y) { return x < 4 ? -32767.0 : hills(x, y); };
    QVERIFY(write(file));
    const auto terrain = opened({file.name});
    QVERIFY(terrain);
    NoProgress progress;
    const auto scan = terrain->scan(progress);
    QVERIFY(scan && scan->range);
    QCOMPARE(scan->voids, qint64(4) * 48);
    QVERIFY(scan->range->first > 0.0);
    QVERIFY(terrain->facts().notes.join(u' ').contains("-32767"));
    QCOMPARE(countVoids(heightsOf(*terrain, {})), scan->voids);
    // A deep sea is none.
    file.name = m_folder.filePath("sea.tif");
    file.height = [](int x, int y) { return x == y ? -9999.0 : -9500.0 - x; };
    QVERIFY(write(file));
    QCOMPARE(countVoids(heightsOf(*opened({file.name}), {})), 0);
}

QTEST_APPLESS_MAIN(TestFileKinds)
#include "test_filekinds.moc"
