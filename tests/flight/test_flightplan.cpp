#include "base/truncate.h"
#include "flight/figures.h"
#include "flight/flightplan.h"
#include "flight/pathcurve.h"

#include <QTest>

#include <cmath>

namespace {

QList<Waypoint> numbered(int count)
{
    QList<Waypoint> waypoints;
    for (int i = 0; i < count; ++i)
        waypoints.append({10 * i, -10 * i, i, 0.25 * i, -0.5 * i});
    return waypoints;
}

} // namespace

class TestFlightPlan : public QObject {
    Q_OBJECT

private slots:
    void valuesAreCutToThirtyTwoBits_data();
    void valuesAreCutToThirtyTwoBits();
    void controlPointIsHitWithinTenPixels_data();
    void controlPointIsHitWithinTenPixels();
    void firstControlPointIsHitFirst();
    void directionHandleIsHitWithinFivePixels_data();
    void directionHandleIsHitWithinFivePixels();
    void waypointTurnsTowardsAPlace_data();
    void waypointTurnsTowardsAPlace();
    void waypointKeepsItsHeadingOnTheSpot();
    void focusLeavesTheWaypointOnTheSpotAlone();
    void levelsHaveTheirSamples();
    void curveMovesTheWaypoints();
    void missingWaypointsAreAppended();
    void threePointsMoveNothing();
    void listIsFittedToTheControlPoints();
    void doublingPutsWaypointsBetween();
    void doublingTruncatesTowardsZero();
    void doublingStopsAtLevelFive();
    void doublingAnEmptyListMakesThree();
    void halvingKeepsTheEnds();
    void halvingStopsAtLevelZero();
    void halvingUndoesDoubling();
    void headingsFollowTheCurve();
    void unwrappingTurnsTheShortWay();
    void unwrappingTakesTheLowerTurnOfATie();
    void unwrappingLeavesWhatIsTooFarOff();
    void extremeNumbersDoNotOverflow();
};

void TestFlightPlan::valuesAreCutToThirtyTwoBits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("whole");
    QTest::newRow("half up") << 2.5 << 3;
    QTest::newRow("just below the half") << 2.49 << 2;
    QTest::newRow("towards zero below it") << -2.5 << -2;
    QTest::newRow("minus three quarters") << -0.75 << 0;
    QTest::newRow("highest") << 2147483647.0 << Most;
    QTest::newRow("beyond") << 1e300 << Most;
    QTest::newRow("below") << -1e300 << Least;
    QTest::newRow("no number") << std::nan("") << 0;
}

void TestFlightPlan::valuesAreCutToThirtyTwoBits()
{
    QFETCH(double, value);
    QTEST(truncatedPlusHalf(value), "whole");
}

void TestFlightPlan::controlPointIsHitWithinTenPixels_data()
{
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("dy");
    QTest::addColumn<int>("hit");
    QTest::newRow("the spot") << 0 << 0 << 0;
    QTest::newRow("ten to the right") << 10 << 0 << 0;
    QTest::newRow("eight and six") << -8 << 6 << 0;
    QTest::newRow("eight and seven") << -8 << 7 << -1;
    QTest::newRow("eleven below") << 0 << -11 << -1;
}

void TestFlightPlan::controlPointIsHitWithinTenPixels()
{
    QFETCH(int, dx);
    QFETCH(int, dy);
    QTEST(controlPointAt({{50, 60, 0, 0.0}}, 50 + dx, 60 + dy), "hit");
}

void TestFlightPlan::firstControlPointIsHitFirst()
{
    const QList<ControlPoint> points{{0, 0, 0, 0}, {50, 50, 0, 0}, {51, 50, 0, 0}};
    QCOMPARE(controlPointAt(points, 51, 50), 1);
}

void TestFlightPlan::directionHandleIsHitWithinFivePixels_data()
{
    QTest::addColumn<double>("heading");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("hit");
    QTest::newRow("north") << 0.0 << 100 << 140 << 0;
    QTest::newRow("north, three and four off") << 0.0 << 103 << 144 << 0;
    QTest::newRow("north, four and four off") << 0.0 << 104 << 144 << -1;
    QTest::newRow("east") << Pi / 2 << 140 << 100 << 0;
    QTest::newRow("south") << Pi << 100 << 60 << 0;
    QTest::newRow("west, not normalised") << 3.5 * Pi << 60 << 100 << 0;
    QTest::newRow("the waypoint itself") << 0.0 << 100 << 100 << -1;
}

void TestFlightPlan::directionHandleIsHitWithinFivePixels()
{
    QFETCH(double, heading);
    QFETCH(int, x);
    QFETCH(int, y);
    QTEST(directionHandleAt({Waypoint(100, 100, 0, heading, 0.0)}, x, y), "hit");
}

void TestFlightPlan::waypointTurnsTowardsAPlace_data()
{
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("dy");
    QTest::addColumn<double>("heading");
    QTest::newRow("north") << 0 << 5 << 0.0;
    QTest::newRow("east") << 9 << 0 << Pi / 2;
    QTest::newRow("south west") << -3 << -3 << -0.75 * Pi;
    QTest::newRow("south") << 0 << -1 << Pi;
}

void TestFlightPlan::waypointTurnsTowardsAPlace()
{
    QFETCH(int, dx);
    QFETCH(int, dy);
    Waypoint waypoint(7, 8, 9, 1.0, 2.0);
    QVERIFY(turnTowards(waypoint, 7 + dx, 8 + dy));
    QTEST(waypoint.a, "heading");
    QCOMPARE(waypoint.p, 2.0);
}

void TestFlightPlan::waypointKeepsItsHeadingOnTheSpot()
{
    Waypoint waypoint(7, 8, 9, 1.0, 2.0);
    QVERIFY(!turnTowards(waypoint, 7, 8));
    QCOMPARE(waypoint, Waypoint(7, 8, 9, 1.0, 2.0));
}

void TestFlightPlan::focusLeavesTheWaypointOnTheSpotAlone()
{
    QList<Waypoint> waypoints{{0, 0, 0, 1.0, 0.0}, {5, 5, 0, 1.0, 0.0}};
    focusHeadings(waypoints, 5, 5);
    QCOMPARE(waypoints[0].a, Pi / 4);
    QCOMPARE(waypoints[1].a, 1.0);
}

void TestFlightPlan::levelsHaveTheirSamples()
{
    QCOMPARE(lastSample(0), 120);
    QCOMPARE(lastSample(1), 240);
    QCOMPARE(lastSample(5), 3840);
    QCOMPARE(lastSample(99), 3840);
    QCOMPARE(lastSample(-1), 120);
}

void TestFlightPlan::curveMovesTheWaypoints()
{
    QList<Waypoint> waypoints = numbered(7);
    const QList<QPoint> curve = updatePlan(square(), waypoints, 0);
    QCOMPARE(curve.size(), 121);
    QCOMPARE(curve.at(60), QPoint(40, 60));
    // Waypoint k stands at t = k / 6.
    const QList<QPoint> expected{{0, 0},   {6, 33},  {21, 53}, {40, 60},
                                 {59, 53}, {74, 33}, {80, 0}};
    for (int k = 0; k < 7; ++k) {
        QCOMPARE(QPoint(waypoints[k].x, waypoints[k].y), expected.at(k));
        QCOMPARE(waypoints[k].z, k);
        QCOMPARE(waypoints[k].a, 0.25 * k);
    }
}

void TestFlightPlan::missingWaypointsAreAppended()
{
    QList<Waypoint> waypoints;
    updatePlan(square(), waypoints, 1);
    QCOMPARE(waypoints.size(), 13);
    QCOMPARE(waypoints.at(6), Waypoint(40, 60, 100, 0.0, 0.0));
    QCOMPARE(waypoints.at(12), Waypoint(80, 0, 100, 0.0, 0.0));
}

void TestFlightPlan::threePointsMoveNothing()
{
    QList<Waypoint> waypoints = numbered(7);
    QVERIFY(updatePlan(square().mid(1), waypoints, 0).isEmpty());
    QCOMPARE(waypoints, numbered(7));
    QVERIFY(updatePlan({}, waypoints, 5).isEmpty());
}

void TestFlightPlan::listIsFittedToTheControlPoints()
{
    QList<Waypoint> waypoints;
    fitWaypoints(square(), waypoints, 0);
    QCOMPARE(waypoints.size(), 6);
    QCOMPARE(waypoints.at(5), Waypoint(0, 0, 100, 0.0, 0.0));
    waypoints = numbered(13);
    fitWaypoints(square(), waypoints, 1);
    QCOMPARE(waypoints, numbered(13));
    fitWaypoints(square().mid(1), waypoints, 1);
    QVERIFY(waypoints.isEmpty());
}

void TestFlightPlan::doublingPutsWaypointsBetween()
{
    QList<Waypoint> waypoints = numbered(7);
    int level = 0;
    doubleWaypoints(waypoints, level);
    QCOMPARE(level, 1);
    QCOMPARE(waypoints.size(), 13);
    QCOMPARE(waypoints.at(12), numbered(7).at(6));
    QCOMPARE(waypoints.at(4), numbered(7).at(2));
    QCOMPARE(waypoints.at(5), Waypoint(25, -25, 2, 0.625, -1.25));
}

void TestFlightPlan::doublingTruncatesTowardsZero()
{
    QList<Waypoint> waypoints(7, Waypoint(-3, Most, Least, 0.0, 0.0));
    waypoints[1] = Waypoint(0, Most, Least, 0.0, 0.0);
    int level = 0;
    doubleWaypoints(waypoints, level);
    QCOMPARE(waypoints.at(1).x, -1);
    QCOMPARE(waypoints.at(1).y, Most);
    QCOMPARE(waypoints.at(1).z, Least);
}

void TestFlightPlan::doublingStopsAtLevelFive()
{
    QList<Waypoint> waypoints = numbered(97);
    int level = 4;
    doubleWaypoints(waypoints, level);
    QCOMPARE(level, 5);
    QCOMPARE(waypoints.size(), 193);
    doubleWaypoints(waypoints, level);
    QCOMPARE(level, 5);
}

void TestFlightPlan::doublingAnEmptyListMakesThree()
{
    QList<Waypoint> waypoints;
    int level = 0;
    doubleWaypoints(waypoints, level);
    QCOMPARE(level, 1);
    updatePlan(square(), waypoints, level);
    QCOMPARE(waypoints.size(), 13);
}

void TestFlightPlan::halvingKeepsTheEnds()
{
    QList<Waypoint> waypoints = numbered(13);
    int level = 1;
    halveWaypoints(waypoints, level);
    QCOMPARE(level, 0);
    QCOMPARE(waypoints.size(), 7);
    for (int k = 0; k < 7; ++k)
        QCOMPARE(waypoints.at(k), numbered(13).at(2 * k));
}

void TestFlightPlan::halvingStopsAtLevelZero()
{
    QList<Waypoint> waypoints;
    int level = 0;
    halveWaypoints(waypoints, level);
    QCOMPARE(level, 0);
    QVERIFY(waypoints.isEmpty());
}

void TestFlightPlan::halvingUndoesDoubling()
{
    QList<Waypoint> waypoints = numbered(25);
    int level = 2;
    doubleWaypoints(waypoints, level);
    halveWaypoints(waypoints, level);
    QCOMPARE(level, 2);
    QCOMPARE(waypoints, numbered(25));
}

void TestFlightPlan::headingsFollowTheCurve()
{
    QList<Waypoint> waypoints = numbered(7);
    headAlongCurve(square(), waypoints, 0);
    // From t to t + 1/120: the first step leads almost north, the middle one east,
    // the last one almost south.
    const double s = 1.0 / 120;
    const double dx = 80 * (3 * s * s - 2 * s * s * s);
    const double dy = 240 * s * (1 - s);
    QVERIFY(near(waypoints[0].a, std::atan2(dx, dy)));
    QVERIFY(near(waypoints[6].a, std::atan2(dx, -dy)));
    const double t = 0.5 + s;
    QVERIFY(near(waypoints[3].a, std::atan2(80 * (3 * t * t - 2 * t * t * t) - 40,
                                            240 * t * (1 - t) - 60)));
    QCOMPARE(waypoints[3].p, -1.5);
}

void TestFlightPlan::unwrappingTurnsTheShortWay()
{
    QList<Waypoint> waypoints{{0, 0, 0, 3.1, 0.2}, {0, 0, 0, -3.1, 6.4}};
    harmonizeAngles(waypoints);
    QCOMPARE(waypoints[0].a, 3.1);
    QVERIFY(near(waypoints[1].a, 3.1831853071795862));
    QVERIFY(near(waypoints[1].p, 6.4 - 2 * Pi));
}

void TestFlightPlan::unwrappingTakesTheLowerTurnOfATie()
{
    QList<Waypoint> waypoints{{0, 0, 0, 0.0, 0.0}, {0, 0, 0, Pi, 0.0}};
    harmonizeAngles(waypoints);
    QCOMPARE(waypoints[1].a, -Pi);
}

void TestFlightPlan::unwrappingLeavesWhatIsTooFarOff()
{
    QList<Waypoint> waypoints{
        {0, 0, 0, 0.0, 200.0}, {0, 0, 0, 1e6, 0.0}, {0, 0, 0, std::nan(""), 0.0}};
    harmonizeAngles(waypoints);
    QCOMPARE(waypoints[1].a, 1e6);
    // 25 turns are the most: 50 pi of the 200.
    QVERIFY(near(waypoints[1].p, 50 * Pi));
    QVERIFY(std::isnan(waypoints[2].a));
}

void TestFlightPlan::extremeNumbersDoNotOverflow()
{
    const QList<ControlPoint> points{{Most, Least, Most, 0.0},
                                     {Least, Most, Least, 0.0},
                                     {Most, Most, Most, 0.0},
                                     {Least, Least, Least, 0.0}};
    QCOMPARE(controlPointAt(points, Least, Most), 1);
    QCOMPARE(controlPointAt(points, 0, 0), -1);
    QList<Waypoint> waypoints(7, Waypoint(Most, Least, Most, 1e308, 1e308));
    QCOMPARE(directionHandleAt(waypoints, Least, Most), -1);
    focusHeadings(waypoints, Least, Most);
    QVERIFY(near(waypoints[0].a, -Pi / 4));
    int level = 0;
    doubleWaypoints(waypoints, level);
    updatePlan(points, waypoints, level);
    QCOMPARE(waypoints.constFirst().x, Most);
    QCOMPARE(waypoints.constLast().y, Least + 1); // trunc(v + 0.5)
    headAlongCurve(points, waypoints, level);
    harmonizeAngles(waypoints);
}

QTEST_APPLESS_MAIN(TestFlightPlan)
#include "test_flightplan.moc"
