#include "flight/straightcamera.h"

#include "base/pi.h"
#include "scene/scenerydata.h"

#include <QTest>

#include <cmath>

class TestStraightCamera : public QObject {
    Q_OBJECT

private slots:
    void withoutInertiaStepsAreEqual()
    {
        for (int k = 0; k <= 4; ++k)
            QCOMPARE(smoothedValue(k / 4.0, 10.0, 30.0, 0.0), 10.0 + 5.0 * k);
    }

    void inertiaStartsAndEndsGently_data()
    {
        QTest::addColumn<double>("t");
        QTest::addColumn<double>("value");
        const double k = 1 / (1 - std::exp(-0.5));
        QTest::newRow("start") << 0.0 << 100.0;
        QTest::newRow("a quarter")
            << 0.25 << 100 + 100 * 0.25 * (1 - std::exp(-0.25)) * k;
        QTest::newRow("half") << 0.5 << 150.0;
        QTest::newRow("three quarters")
            << 0.75 << 100 + 100 * (1 - 0.25 * (1 - std::exp(-0.25)) * k);
        QTest::newRow("end") << 1.0 << 200.0;
    }
    void inertiaStartsAndEndsGently()
    {
        QFETCH(double, t);
        QFETCH(double, value);
        QCOMPARE(smoothedValue(t, 100.0, 200.0, 1.0), value);
        QVERIFY(t != 0.25 || smoothedValue(t, 100.0, 200.0, 1.0) < 125.0);
    }

    void branchesMeetInTheMiddle()
    {
        const double below = smoothedValue(0.5 - 1e-12, 0.0, 1.0, 0.3);
        const double at = smoothedValue(0.5, 0.0, 1.0, 0.3);
        QVERIFY(std::abs(below - at) < 1e-9);
    }

    void framesCountOverTheWholeMovement()
    {
        SceneryData data;
        data.Bildanzahl = 5;
        data.Traegheit = 0.0;
        data.StartbildNr = 2;
        data.EndbildNr = 3;
        data.BeobXA = 0.0;
        data.BeobXE = 40.0;
        QCOMPARE(straightCamera(data, 2, 1.0).position.x, 20.0);
        QCOMPARE(straightCamera(data, 4, 1.0).position.x, 40.0);
        QCOMPARE(straightCamera(data, 2, 1.0).position.w, 1.0);
    }

    void oneFrameShowsTheFirstValues()
    {
        SceneryData data;
        data.Bildanzahl = 1;
        data.BeobZA = 7.0;
        data.BeobZE = 9.0;
        QCOMPARE(straightCamera(data, 0, 1.0).position.z, 7.0);
        QCOMPARE(straightCamera(data, 3, 1.0).position.z, 7.0);
    }

    void anglesTurnToRadians()
    {
        SceneryData data;
        data.Bildanzahl = 1;
        data.RichtungA = 90.0;
        data.NeigungA = -45.0;
        data.VerkantenA = 180.0;
        const FrameCamera camera = straightCamera(data, 0, 1.0);
        QCOMPARE(camera.direction, Pi / 2);
        QCOMPARE(camera.pitch, -Pi / 4);
        QCOMPARE(camera.roll, Pi);
    }

    void straightDownIsKeptOffTheVertical_data()
    {
        QTest::addColumn<double>("first");
        QTest::addColumn<double>("last");
        QTest::addColumn<int>("frame");
        QTest::addColumn<double>("degrees");
        QTest::newRow("at the start") << -90.0 << 0.0 << 0 << -89.999;
        QTest::newRow("at the end") << 0.0 << -90.0 << 2 << -89.999;
        QTest::newRow("on the way it stays") << -80.0 << -100.0 << 1 << -90.0;
        QTest::newRow("straight up stays") << 90.0 << 90.0 << 0 << 90.0;
    }
    void straightDownIsKeptOffTheVertical()
    {
        QFETCH(double, first);
        QFETCH(double, last);
        QFETCH(int, frame);
        QFETCH(double, degrees);
        SceneryData data;
        data.Bildanzahl = 3;
        data.Traegheit = 0.0;
        data.NeigungA = first;
        data.NeigungE = last;
        QCOMPARE(straightCamera(data, frame, 1.0).pitch, degrees / 180 * Pi);
    }

    void focalLengthFollowsTheSizeOfTheTarget()
    {
        SceneryData data;
        data.Bildanzahl = 1;
        data.BrennA = 300.0;
        QCOMPARE(straightCamera(data, 0, 0.5).focal, 150.0);
        QCOMPARE(straightCamera(data, 0, 2.0).focal, 600.0);
    }

    void dustWithoutALastValueStays()
    {
        SceneryData data;
        data.Bildanzahl = 3;
        data.Traegheit = 0.0;
        data.NebelA = 500.0;
        data.NebelE = 0.0;
        for (int frame = 0; frame < 3; ++frame)
            QCOMPARE(straightCamera(data, frame, 1.0).dustRange, 500.0);
        data.NebelE = 1500.0;
        QCOMPARE(straightCamera(data, 1, 1.0).dustRange, 1000.0);
    }
};

QTEST_GUILESS_MAIN(TestStraightCamera)
#include "test_straightcamera.moc"
