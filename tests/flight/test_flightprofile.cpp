#include "flight/figures.h"
#include "flight/flightplan.h"
#include "flight/flightprofile.h"

#include <QTest>

#include <cmath>

namespace {

// Four points on one line, 60 apart, which makes the station 180 t.
QList<ControlPoint> climb()
{
    return {{0, 7, 100, 0.0}, {60, 7, 100, 0.0}, {120, 7, 220, 0.0}, {180, 7, 220, 0.0}};
}

} // namespace

class TestFlightProfile : public QObject {
    Q_OBJECT

private slots:
    void stationsAddUpTheControlPolygon();
    void onePointMakesAProfileOfNoLength();
    void stationsOfWaypointsComeFromThePlan();
    void terrainHasAHundredStepsASegment();
    void extentHoldsPointsAndTerrain();
    void extentIsCutTowardsZero();
    void curveMovesTheWaypoints();
    void missingWaypointsAreAppended();
    void controlPointIsHitWithinTenUnits();
    void pitchHandleIsHitWithinFiveUnits();
    void waypointTiltsTowardsAPlace_data();
    void waypointTiltsTowardsAPlace();
    void waypointKeepsItsPitchOnTheSpot();
    void pitchesFollowTheCurve();
    void levelFlightHasNoPitch();
    void listsEndTheSameWhicheverViewIsFirst();
    void extremeNumbersDoNotOverflow();
};

void TestFlightProfile::stationsAddUpTheControlPolygon()
{
    QList<ControlPoint> points{{0, 0, 0, 9.0}, {3, 4, 0, 9.0}, {3, 16, 0, 9.0}};
    QCOMPARE(updateStations(points), 17);
    QCOMPARE(points[0].i, 0.0);
    QCOMPARE(points[1].i, 5.0);
    QCOMPARE(points[2].i, 17.0);
    points[2] = {4, 5, 0, 0.0};
    QCOMPARE(updateStations(points), 6); // 5 + 1.414
}

void TestFlightProfile::onePointMakesAProfileOfNoLength()
{
    QList<ControlPoint> points{{30, 40, 50, 60.0}};
    QCOMPARE(updateStations(points), 0);
    QCOMPARE(points[0].i, 0.0);
    points.clear();
    QCOMPARE(updateStations(points), 0);
}

void TestFlightProfile::stationsOfWaypointsComeFromThePlan()
{
    QList<Waypoint> waypoints{{0, 0, 0, 0.0, 0.0}, {6, 8, 0, 0.0, 0.0}};
    waypoints[0].i = 44.0;
    updateStations(waypoints);
    QCOMPARE(waypoints[0].i, 0.0);
    QCOMPARE(waypoints[1].i, 10.0);
}

void TestFlightProfile::terrainHasAHundredStepsASegment()
{
    QList<ControlPoint> points{{0, 0, 0, 0.0}, {50, 0, 0, 0.0}, {50, 200, 0, 0.0}};
    updateStations(points);
    const auto terrain =
        terrainUnder(points, [](double x, double y) { return 1000 * x + y; });
    QCOMPARE(terrain.size(), std::size_t(200));
    // Half pixels are not cut off.
    QCOMPARE(terrain[1].station, 0.5);
    QCOMPARE(terrain[1].height, 500.0);
    QCOMPARE(terrain[100].station, 50.0);
    QCOMPARE(terrain[199].station, 50.0 + 198.0);
    QCOMPARE(terrain[199].height, 50000.0 + 198.0);
}

void TestFlightProfile::extentHoldsPointsAndTerrain()
{
    HeightExtent extent = heightExtent(climb(), {});
    QCOMPARE(extent.highest, 220);
    QCOMPARE(extent.lowest, 100);
    extent = heightExtent({{0, 0, 100, 0.0}}, {{0.0, 40.0}, {1.0, 99.0}});
    QCOMPARE(extent.highest, 100);
    QCOMPARE(extent.lowest, 40);
    QCOMPARE(heightExtent({}, {}).lowest, 1000000);
}

void TestFlightProfile::extentIsCutTowardsZero()
{
    HeightExtent extent = heightExtent({{0, 0, 0, 0.0}}, {{0, 150.9}, {0, -3.7}});
    QCOMPARE(extent.highest, 150);
    QCOMPARE(extent.lowest, -3);
    extent = heightExtent({{0, 0, 0, 0.0}}, {{0, 1e12}, {0, -1e12}, {0, std::nan("")}});
    QCOMPARE(extent.highest, Most);
    QCOMPARE(extent.lowest, Least);
}

void TestFlightProfile::curveMovesTheWaypoints()
{
    QList<ControlPoint> points = climb();
    updateStations(points);
    QList<Waypoint> waypoints(7, Waypoint(1, 2, 3, 4.0, 5.0));
    QCOMPARE(updateProfile(points, waypoints, 0).size(), 121);
    // Height 100 + 120 (3t^2 - 2t^3) at t = k / 6.
    const QList<int> heights{100, 109, 131, 160, 189, 211, 220};
    for (int k = 0; k < 7; ++k) {
        QCOMPARE(waypoints[k].i, 30.0 * k);
        QCOMPARE(waypoints[k].z, heights.at(k));
        QCOMPARE(waypoints[k].x, 1);
        QCOMPARE(waypoints[k].a, 4.0);
    }
}

void TestFlightProfile::missingWaypointsAreAppended()
{
    QList<ControlPoint> points = climb();
    updateStations(points);
    QList<Waypoint> waypoints;
    updateProfile(points, waypoints, 0);
    QCOMPARE(waypoints.size(), 7);
    Waypoint last(0, 0, 220, 0.0, 0.0);
    last.i = 180.0;
    QCOMPARE(waypoints.constLast(), last);
    updateProfile(points.mid(1), waypoints, 5);
    QCOMPARE(waypoints.size(), 7);
}

void TestFlightProfile::controlPointIsHitWithinTenUnits()
{
    QList<ControlPoint> points = climb();
    updateStations(points);
    QCOMPARE(profilePointAt(points, 60, 110), 1);
    QCOMPARE(profilePointAt(points, 66, 108), 1);
    QCOMPARE(profilePointAt(points, 67, 108), -1);
}

void TestFlightProfile::pitchHandleIsHitWithinFiveUnits()
{
    Waypoint waypoint(0, 0, 100, 0.0, Pi / 2);
    waypoint.i = 50.0;
    QCOMPARE(pitchHandleAt({waypoint}, 40, 50, 140), 0);
    QCOMPARE(pitchHandleAt({waypoint}, 40, 53, 144), 0);
    QCOMPARE(pitchHandleAt({waypoint}, 40, 54, 144), -1);
    waypoint.p = 0.0;
    QCOMPARE(pitchHandleAt({waypoint}, 40, 90, 100), 0);
}

void TestFlightProfile::waypointTiltsTowardsAPlace_data()
{
    QTest::addColumn<int>("ds");
    QTest::addColumn<int>("dh");
    QTest::addColumn<double>("pitch");
    QTest::newRow("level ahead") << 40 << 0 << 0.0;
    QTest::newRow("straight up") << 0 << 40 << Pi / 2;
    QTest::newRow("straight down") << 0 << -40 << -Pi / 2;
    QTest::newRow("half up") << 40 << 40 << Pi / 4;
    // Over the top and back: the angle runs on downward past the vertical.
    QTest::newRow("behind and up") << -40 << 40 << -1.25 * Pi;
    QTest::newRow("level behind") << -40 << 0 << -Pi;
}

void TestFlightProfile::waypointTiltsTowardsAPlace()
{
    QFETCH(int, ds);
    QFETCH(int, dh);
    QFETCH(double, pitch);
    Waypoint waypoint(0, 0, 100, 0.5, 0.25);
    waypoint.i = 49.75; // counts as 50
    QVERIFY(tiltTowards(waypoint, 50 + ds, 100 + dh));
    QVERIFY(near(waypoint.p, pitch));
    QCOMPARE(waypoint.a, 0.5);
}

void TestFlightProfile::waypointKeepsItsPitchOnTheSpot()
{
    QList<Waypoint> waypoints(2, Waypoint(0, 0, 100, 0.5, 0.25));
    waypoints[0].i = 49.75;
    waypoints[1].i = 10.0;
    focusPitches(waypoints, 50, 100);
    QCOMPARE(waypoints[0].p, 0.25);
    QVERIFY(near(waypoints[1].p, 0.0));
}

void TestFlightProfile::pitchesFollowTheCurve()
{
    QList<ControlPoint> points = climb();
    updateStations(points);
    QList<Waypoint> waypoints(7);
    pitchAlongCurve(points, waypoints, 0);
    const auto height = [](double t) { return 100 + 120 * (3 * t * t - 2 * t * t * t); };
    const double step = 180.0 / 120;
    for (int k = 0; k < 6; ++k) {
        const double t = k / 6.0;
        const double rise = height(t + 1.0 / 120) - height(t);
        QVERIFY(near(waypoints[k].p, std::atan2(rise, step)));
    }
    QVERIFY(near(waypoints[6].p, std::atan2(height(1.0) - height(119.0 / 120), step)));
}

void TestFlightProfile::levelFlightHasNoPitch()
{
    QList<ControlPoint> points = climb();
    for (ControlPoint &p : points)
        p.z = 100;
    updateStations(points);
    QList<Waypoint> waypoints(13, Waypoint(0, 0, 0, 0.0, 1.0));
    pitchAlongCurve(points, waypoints, 1);
    for (const Waypoint &w : waypoints)
        QVERIFY(near(w.p, 0.0));
}

void TestFlightProfile::listsEndTheSameWhicheverViewIsFirst()
{
    QList<ControlPoint> points = climb();
    for (const int listed : {0, 6, 7}) {
        QList<Waypoint> first(listed, Waypoint(0, 0, 100, 0.0, 0.0));
        QList<Waypoint> second = first;
        updatePlan(points, first, 0);
        updateStations(points);
        updateProfile(points, first, 0);
        updateProfile(points, second, 0);
        updatePlan(points, second, 0);
        QCOMPARE(first, second);
        QCOMPARE(first.size(), 7);
    }
}

void TestFlightProfile::extremeNumbersDoNotOverflow()
{
    QList<ControlPoint> points{{Most, Least, Most, 0.0},
                               {Least, Most, Least, 0.0},
                               {Most, Most, Most, 0.0},
                               {Least, Least, Least, 0.0}};
    QCOMPARE(updateStations(points), Most);
    QVERIFY(std::isfinite(points.constLast().i));
    QList<Waypoint> waypoints(7, Waypoint(Most, Least, Least, 0.0, 1e308));
    updateStations(waypoints);
    QCOMPARE(pitchHandleAt(waypoints, 40, Least, Most), -1);
    QCOMPARE(profilePointAt(points, 0, Most), 0);
    updateProfile(points, waypoints, 5);
    focusPitches(waypoints, Least, Most);
    pitchAlongCurve(points, waypoints, 5);
    const auto terrain = terrainUnder(points, [](double x, double y) { return x * y; });
    const HeightExtent extent = heightExtent(points, terrain);
    QCOMPARE(extent.highest, Most);
    QCOMPARE(extent.lowest, Least);
}

QTEST_APPLESS_MAIN(TestFlightProfile)
#include "test_flightprofile.moc"
