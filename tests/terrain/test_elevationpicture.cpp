#include "base/workerpool.h"
#include "raster/elevationimage.h"
#include "terrain/elevationpicture.h"
#include "terrain/madeterrain.h"
#include "terrain/rowwork.h"

#include <QTest>

/// Heights as pixels of 24 bits, and the unit that suits them.
class TestElevationPicture : public QObject {
    Q_OBJECT

private slots:
    void heightsAreStoredAsTheProgramReadsThem_data();
    void heightsAreStoredAsTheProgramReadsThem();
    void heightsComeBack();
    void unitOfAWorld_data();
    void unitOfAWorld();
    void zScaleIsWhatTheFormHolds();
};

void TestElevationPicture::heightsAreStoredAsTheProgramReadsThem_data()
{
    QTest::addColumn<double>("metres");
    QTest::addColumn<double>("unit");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("cut");
    QTest::newRow("sea level") << 0.0 << 0.01 << 0 << 0;
    QTest::newRow("a mountain") << 8848.86 << 0.01 << 884886 << 0;
    QTest::newRow("a trench") << -10994.0 << 0.01 << -1099400 << 0;
    QTest::newRow("half a unit up") << 0.5 << 1.0 << 1 << 0;
    QTest::newRow("half a unit down") << -2.5 << 1.0 << -3 << 0;
    QTest::newRow("the highest") << 8388607.0 << 1.0 << 8388607 << 0;
    QTest::newRow("the lowest") << -8388608.0 << 1.0 << -8388608 << 0;
    QTest::newRow("too high") << 90000.0 << 0.01 << 8388607 << 1;
    QTest::newRow("too low") << -90000.0 << 0.01 << -8388608 << 1;
    QTest::newRow("far too high") << 3e38 << 0.01 << 8388607 << 1;
}

void TestElevationPicture::heightsAreStoredAsTheProgramReadsThem()
{
    QFETCH(double, metres);
    QFETCH(double, unit);
    QFETCH(int, steps);
    QFETCH(int, cut);
    WorkerPool pool(2);
    NoProgress progress;
    const Heights heights = madeHeights({1, 1}, [&](int, int) { return metres; });
    const Result<ElevationPicture> picture =
        elevationPicture(heights, unit, pool, Stretch{progress});
    QVERIFY(picture);
    QCOMPARE(ElevationImage::stepsOf(picture->image.pixel(0, 0)), steps);
    QCOMPARE(picture->cut, qint64(cut));
}

void TestElevationPicture::heightsComeBack()
{
    WorkerPool pool(2);
    NoProgress progress;
    const Heights heights =
        madeHeights({33, 47}, [](int x, int y) { return (x * y - 700) * 0.25; });
    const Result<ElevationPicture> picture =
        elevationPicture(heights, 0.25, pool, Stretch{progress});
    QVERIFY(picture);
    const Result<Heights> back =
        heightsOfPicture(picture->image, 0.25, pool, Stretch{progress});
    QVERIFY(back);
    QCOMPARE(back->size, heights.size);
    QVERIFY(back->metres == heights.metres);
}

void TestElevationPicture::unitOfAWorld_data()
{
    QTest::addColumn<double>("metresPerUnit");
    QTest::addColumn<double>("exaggeration");
    QTest::addColumn<double>("unit");
    QTest::newRow("fine") << 1.0 << 1.0 << 0.01;
    QTest::newRow("usual") << 30.0 << 1.0 << 0.01;
    QTest::newRow("the last that fits") << 200.0 << 1.0 << 0.01;
    QTest::newRow("wide") << 201.0 << 1.0 << 0.1;
    QTest::newRow("a continent") << 30000.0 << 1.0 << 10.0;
    QTest::newRow("exaggerated") << 1000.0 << 5.0 << 0.01;
    QTest::newRow("flattened") << 100.0 << 0.1 << 0.1;
}

void TestElevationPicture::unitOfAWorld()
{
    QFETCH(double, metresPerUnit);
    QFETCH(double, exaggeration);
    QFETCH(double, unit);
    QCOMPARE(unitFor(metresPerUnit, exaggeration), unit);
}

void TestElevationPicture::zScaleIsWhatTheFormHolds()
{
    QCOMPARE(zScaleOf(0.01, 30.0, 1.0), 0.000333);
    QCOMPARE(zScaleOf(0.01, 1.0, 2.0), 0.02);
    QCOMPARE(zScaleOf(1.0, 1e9, 1.0), 0.0);
}

QTEST_APPLESS_MAIN(TestElevationPicture)
#include "test_elevationpicture.moc"
