// Terrain of every kind of file, read as GDAL's own programs read it.
#include "geodata/compare.h"
#include "geodata/geodata.h"
#include "geodata/geofile.h"

#include <QTemporaryDir>
#include <QTest>

class TestGeodata : public QObject {
    Q_OBJECT

private slots:
    void aFileIsReadAsGdalDoes_data();
    void aFileIsReadAsGdalDoes();
    void progressNeverGoesBack();
};

Q_DECLARE_METATYPE(GeoFile)
Q_DECLARE_METATYPE(GridRequest)

void TestGeodata::aFileIsReadAsGdalDoes_data()
{
    QTest::addColumn<GeoFile>("file");
    QTest::addColumn<GridRequest>("request");
    const GeoFile plain;
    GridRequest keep;
    GeoFile geographic;
    geographic.crs = QStringLiteral("EPSG:4326");
    geographic.transform = {14.0, 0.001, 0.0, 47.0, 0.0, -0.001};
    geographic.size = {350, 250};
    QTest::newRow("Float32 as it is") << plain << keep;
    QTest::newRow("degrees to UTM") << geographic << GridRequest();
    for (const Resampling each : {Resampling::Nearest, Resampling::Bilinear,
                                  Resampling::Cubic, Resampling::Average}) {
        GridRequest request;
        request.resampling = each;
        QTest::addRow("degrees to UTM, resampling %d", int(each))
            << geographic << request;
        request.size = QSize(90, 70);
        QTest::addRow("degrees to UTM, smaller, %d", int(each)) << geographic << request;
        request.size = QSize(900, 800);
        QTest::addRow("degrees to UTM, larger, %d", int(each)) << geographic << request;
        GeoFile holed = geographic;
        holed.noData = -9999.0;
        holed.height = [](int x, int y) {
            return (x / 7 + y / 5) % 9 == 0 ? -9999.0 : hills(x, y);
        };
        request.size.reset();
        QTest::addRow("voids, %d", int(each)) << holed << request;
        request.size = QSize(90, 70);
        QTest::addRow("voids smaller, %d", int(each)) << holed << request;
    }
}

void TestGeodata::aFileIsReadAsGdalDoes()
{
    QFETCH(GeoFile, file);
    QFETCH(GridRequest, request);
    const QTemporaryDir folder;
    if (file.name.isEmpty())
        file.name = QStringLiteral("dem.tif");
    file.name = folder.filePath(file.name);
    QVERIFY(write(file));
    const auto source = makeGeodata();
    NoProgress progress;
    const auto terrain = source->open({file.name}, {}, progress);
    QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
    const Result<OutputGrid> grid = (*terrain)->plan(request);
    QVERIFY2(grid, qPrintable(grid ? QString() : grid.error().text));
    const Result<Heights> heights = (*terrain)->heights(*grid, progress);
    QVERIFY2(heights, qPrintable(heights ? QString() : heights.error().text));
    const Heights judged = judgedByWarp({file.name}, argumentsFor(*grid));
    QCOMPARE(heights->size, judged.size);
    const Difference found = differenceOf(*heights, judged);
    QVERIFY2(found.isSmall(), qPrintable(found.told()));
}

// Heights after a search for voids that the file does not tell of.
void TestGeodata::progressNeverGoesBack()
{
    class Shares final : public Progress {
    public:
        [[nodiscard]] bool step(qint64 done, qint64 of) override
        {
            const double share = double(done) / double(of);
            goesBack = goesBack || share < last;
            last = share;
            return true;
        }
        double last = 0.0;
        bool goesBack = false;
    };
    const QTemporaryDir folder;
    GeoFile file;
    file.name = folder.filePath(QStringLiteral("dem.tif"));
    file.type = GDT_Int16;
    file.size = {600, 500};
    QVERIFY(write(file));
    const auto source = makeGeodata();
    for (const bool scans : {false, true}) {
        Shares shares;
        NoProgress opening;
        const auto terrain = source->open({file.name}, {}, opening);
        QVERIFY(terrain);
        const Result<OutputGrid> grid = (*terrain)->plan({});
        QVERIFY(grid);
        if (scans)
            QVERIFY((*terrain)->scan(opening));
        QVERIFY((*terrain)->heights(*grid, shares));
        QVERIFY(!shares.goesBack);
        // The second pass begins behind the first, where there is one.
        QVERIFY(scans || shares.last >= 0.1);
    }
}

QTEST_APPLESS_MAIN(TestGeodata)
#include "test_geodata.moc"
