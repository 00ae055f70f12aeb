#include "flight/curvedflight.h"
#include "flight/figures.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

QList<Waypoint> waypointsLooking(double heading, double pitch, int count = 7)
{
    return QList<Waypoint>(count, Waypoint(1, 2, 3, heading, pitch));
}

} // namespace

class TestCurvedFlight : public QObject {
    Q_OBJECT

private slots:
    void limitsAreToldInTheirOrder_data();
    void limitsAreToldInTheirOrder();
    void enoughOfAllPasses();
    void positionRunsFromFirstToLastPoint();
    void fractionReachesOneAtTheLastFrame();
    void twoFramesMakeThreeSamples();
    void framesPastTheLastSampleHoldIt();
    void headingIsSmoothedNotInterpolated();
    void pitchPastTheVerticalIsFolded_data();
    void pitchPastTheVerticalIsFolded();
    void extremeCoordinatesStayFinite();
};

void TestCurvedFlight::limitsAreToldInTheirOrder_data()
{
    QTest::addColumn<int>("controlPoints");
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QString>("text");
    QTest::newRow("three control points")
        << 3 << 0 << 1
        << "The number of control points is 3; it has to be greater than 3.\n";
    QTest::newRow("no waypoints")
        << 4 << 0 << 1 << "The number of waypoints is 0; it has to be greater than 6.\n";
    QTest::newRow("six waypoints")
        << 4 << 6 << 60 << "The number of waypoints is 6; it has to be greater than 6.\n";
    QTest::newRow("one frame")
        << 4 << 7 << 1 << "The total number of frames is 1, has to be greater than 1.\n";
    QTest::newRow("frames below zero")
        << 9 << 13 << -5
        << "The total number of frames is -5, has to be greater than 1.\n";
}

void TestCurvedFlight::limitsAreToldInTheirOrder()
{
    QFETCH(int, controlPoints);
    QFETCH(int, waypoints);
    QFETCH(int, frames);
    const Result<void> checked = checkCurvedFlight(controlPoints, waypoints, frames);
    QVERIFY(!checked);
    QTEST(checked.error().text, "text");
}

void TestCurvedFlight::enoughOfAllPasses() { QVERIFY(checkCurvedFlight(4, 7, 2)); }

void TestCurvedFlight::positionRunsFromFirstToLastPoint()
{
    const CurvedFlight flight(square(), waypointsLooking(0.5, -0.25), 4);
    QCOMPARE(flight.point(0).x, 0.0);
    QCOMPARE(flight.point(0).z, 100.0);
    // Sample 2 of 0 to 4 is the middle of one Bezier segment.
    QCOMPARE(flight.point(2).x, 40.0);
    QCOMPARE(flight.point(2).y, 60.0);
    QCOMPARE(flight.point(2).z, 132.5);
    QCOMPARE(flight.point(4).x, 80.0);
    QCOMPARE(flight.point(4).y, 0.0);
    QVERIFY(near(flight.point(1).heading, 0.5, 1e-12));
    QVERIFY(near(flight.point(3).pitch, -0.25, 1e-12));
}

void TestCurvedFlight::fractionReachesOneAtTheLastFrame()
{
    const CurvedFlight flight(square(), waypointsLooking(0, 0), 12);
    QCOMPARE(flight.point(0).fraction, 0.0);
    QVERIFY(flight.point(11).fraction == 1.0);
    QVERIFY(flight.point(12).fraction == 36.0 / 33.0);
}

void TestCurvedFlight::twoFramesMakeThreeSamples()
{
    const CurvedFlight flight(square(), waypointsLooking(0, 0), 2);
    QVERIFY(flight.point(1).fraction == 1.0);
    QCOMPARE(flight.point(1).x, 40.0);
    QCOMPARE(flight.point(2).x, 80.0);
}

void TestCurvedFlight::framesPastTheLastSampleHoldIt()
{
    const CurvedFlight flight(square(), waypointsLooking(1, 0), 3);
    const CurvePoint last = flight.point(3);
    for (const int frame : {4, 32768, std::numeric_limits<int>::max()}) {
        QVERIFY(flight.point(frame).x == last.x);
        QVERIFY(flight.point(frame).heading == last.heading);
        QVERIFY(flight.point(frame).fraction == last.fraction);
    }
    QVERIFY(flight.point(-1).y == flight.point(0).y);
    QVERIFY(flight.point(std::numeric_limits<int>::min()).fraction == 0.0);
}

void TestCurvedFlight::headingIsSmoothedNotInterpolated()
{
    QList<Waypoint> waypoints = waypointsLooking(0, 0);
    waypoints[3].a = 6.0;
    const CurvedFlight flight(square(), waypoints, 4);
    // Parameter 2 of 0 to 4: the middle point weighs 4/6.
    QVERIFY(near(flight.point(2).heading, 4.0, 1e-12));
    QVERIFY(near(flight.point(0).heading, 0.0, 1e-12));
}

void TestCurvedFlight::pitchPastTheVerticalIsFolded_data()
{
    QTest::addColumn<double>("curve");
    QTest::addColumn<double>("camera");
    QTest::newRow("past the vertical") << -2.0 << -Pi + 2.0;
    QTest::newRow("a little past it") << -1.6 << -Pi + 1.6;
    QTest::newRow("level") << 0.0 << 0.0;
    QTest::newRow("steep") << -1.5 << -1.5;
    QTest::newRow("up past the vertical stays") << 1.6 << 1.6;
}

void TestCurvedFlight::pitchPastTheVerticalIsFolded()
{
    QFETCH(double, curve);
    QFETCH(double, camera);
    const CurvedFlight flight(square(), waypointsLooking(0, curve), 10);
    QVERIFY(near(flight.point(0).pitch, camera, 1e-12));
    QVERIFY(near(flight.point(10).pitch, camera, 1e-12));
}

void TestCurvedFlight::extremeCoordinatesStayFinite()
{
    const QList<ControlPoint> points{{Most, -Most - 1, Most, 0.0},
                                     {-Most - 1, Most, -Most - 1, 0.0},
                                     {Most, Most, Most, 0.0},
                                     {0, 0, 0, 0.0}};
    const CurvedFlight flight(points, waypointsLooking(1e300, -1e300), Most);
    for (const int frame : {0, 1, 16384, 32768}) {
        const CurvePoint camera = flight.point(frame);
        QVERIFY(std::isfinite(camera.x) && std::isfinite(camera.pitch));
    }
}

QTEST_APPLESS_MAIN(TestCurvedFlight)
#include "test_curvedflight.moc"
