#include "flight/figures.h"
#include "patheditors/editorfixture.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <cmath>

/// What the control points make of the waypoints, and what the menu does with them.
class TestSetFlightPathDialogWaypoints : public QObject {
    Q_OBJECT

private slots:
    // Directions
    void directionHandleIsDragged();
    void directionOnTheSpotStaysInHand();
    void halvingWithADirectionInHandIsBorne();
    // Menu
    void menuHasItsEntries();
    void doublingUpToLevelFive();
    void halvingDownToLevelZero();
    void eyesFrontSetsHeadingAndPitch();
    void focusTurnsAllWaypointsToThePointer();
    // Odd points
    void coinciding();
    void pointsFarOutsideAreBorne();
};

void TestSetFlightPathDialogWaypoints::directionHandleIsDragged()
{
    EditorFixture f;
    f.openSquare();
    // Waypoint 3 at (60, 80) looks north: its handle ends at (60, 120).
    f.pressPlan(60, 119);
    f.movePlan(61, 121);
    QVERIFY(near(f.ways[3].a, std::atan2(1, 41)));
    f.movePlan(90, 80);
    QVERIFY(near(f.ways[3].a, Pi / 2));
    QCOMPARE(f.planText(), QStringLiteral("90.0\u00b0"));
    f.releasePlan(90, 110);
    QVERIFY(near(f.ways[3].a, Pi / 4));
    QCOMPARE(f.planText(), "90/39");
    f.movePlan(90, 80);
    QVERIFY(near(f.ways[3].a, Pi / 4));
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialogWaypoints::directionOnTheSpotStaysInHand()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(60, 120);
    f.movePlan(60, 121);
    f.movePlan(60, 80);
    f.releasePlan(60, 80);
    QVERIFY(near(f.ways[3].a, 0.0));
    f.movePlan(20, 80);
    QVERIFY(near(f.ways[3].a, -Pi / 2));
    f.clickPlan(20, 80);
    f.movePlan(60, 20);
    QVERIFY(near(f.ways[3].a, -Pi / 2));
}

void TestSetFlightPathDialogWaypoints::halvingWithADirectionInHandIsBorne()
{
    EditorFixture f;
    f.level = 1;
    f.openSquare();
    f.paint();
    // Waypoint 12 stands at (100, 20) and looks north.
    f.pressPlan(100, 60);
    f.movePlan(100, 61);
    f.choosePlan(60, 60, "Remove Waypoints");
    QCOMPARE(f.ways.size(), 7);
    f.movePlan(110, 61);
    f.releasePlan(150, 61);
    f.paint();
    QCOMPARE(f.ways.size(), 7);
}

void TestSetFlightPathDialogWaypoints::menuHasItsEntries()
{
    EditorFixture f;
    f.openSquare();
    QContextMenuEvent event(QContextMenuEvent::Mouse, {200, 50}, {300, 150});
    QCoreApplication::sendEvent(f.plan.get(), &event);
    const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList texts;
    for (const QAction *entry : menu->actions())
        texts << (entry->isSeparator() ? QString("-") : entry->text());
    QCOMPARE(texts, QStringList({"Add Waypoints", "Remove Waypoints", "-", "Eyes Front",
                                 "-", "Focus"}));
    for (const QAction *entry : menu->actions())
        QVERIFY(entry->isSeparator() || !entry->icon().isNull());
    // The editor may go while its menu is open.
    f.pressButton("pushButtonCancel");
    f.plan.reset();
}

void TestSetFlightPathDialogWaypoints::doublingUpToLevelFive()
{
    EditorFixture f;
    f.openSquare();
    f.ways[0].a = 1.0;
    f.ways[1].a = 2.0;
    for (const int count : {13, 25, 49, 97, 193}) {
        QVERIFY(f.action("actionAddWaypoints")->isEnabled());
        f.choosePlan(60, 60, "Add Waypoints");
        f.paint();
        QCOMPARE(f.ways.size(), count);
        QVERIFY(f.action("actionRemoveWaypoints")->isEnabled());
    }
    QCOMPARE(f.level, 5);
    QVERIFY(!f.action("actionAddWaypoints")->isEnabled());
    QCOMPARE(f.ways[16].a, 1.5);
    QCOMPARE(placeOf(f.ways[96]), QPoint(60, 80));
}

void TestSetFlightPathDialogWaypoints::halvingDownToLevelZero()
{
    EditorFixture f;
    f.level = 1;
    f.openSquare();
    QCOMPARE(f.ways.size(), 13);
    f.choosePlan(60, 60, "Remove Waypoints");
    f.paint();
    QCOMPARE(f.level, 0);
    QCOMPARE(f.ways.size(), 7);
    QVERIFY(!f.action("actionRemoveWaypoints")->isEnabled());
    QVERIFY(f.action("actionAddWaypoints")->isEnabled());
}

void TestSetFlightPathDialogWaypoints::eyesFrontSetsHeadingAndPitch()
{
    EditorFixture f;
    f.openSquare();
    for (Waypoint &w : f.ways)
        w.p = 1.0;
    f.choosePlan(60, 60, "Eyes Front");
    f.paint();
    // Between t = 0.5 and 0.5 + 1/120 the curve leads east and hardly south.
    QVERIFY(std::abs(f.ways[3].a - Pi / 2) < 0.02);
    QVERIFY(std::abs(f.ways[0].a) < 0.02);
    QVERIFY(std::abs(f.ways[6].a - Pi) < 0.02);
    for (const Waypoint &w : std::as_const(f.ways))
        QVERIFY(near(w.p, 0.0));
    QCOMPARE(f.ways[6].i, 240.0);
}

void TestSetFlightPathDialogWaypoints::focusTurnsAllWaypointsToThePointer()
{
    EditorFixture f;
    f.openSquare();
    f.ways[3].a = 0.75;
    f.choosePlan(60, 80, "Focus"); // where waypoint 3 stands
    QCOMPARE(f.ways[3].a, 0.75);
    QVERIFY(near(f.ways[0].a, std::atan2(40, 60)));
    QVERIFY(near(f.ways[6].a, std::atan2(-40, 60)));
}

void TestSetFlightPathDialogWaypoints::coinciding()
{
    EditorFixture f;
    f.points = QList<ControlPoint>(6, ControlPoint(50, 50, 100, 0.0));
    f.ways = QList<Waypoint>(7);
    f.open();
    f.choosePlan(60, 60, "Eyes Front");
    f.choosePlan(60, 60, "Add Waypoints");
    f.paint();
    QCOMPARE(f.ways.size(), 13);
    for (const Waypoint &w : std::as_const(f.ways)) {
        QCOMPARE(placeOf(w), QPoint(50, 50));
        QCOMPARE(w.i, 0.0);
        QVERIFY(std::isfinite(w.a) && std::isfinite(w.p));
    }
}

void TestSetFlightPathDialogWaypoints::pointsFarOutsideAreBorne()
{
    EditorFixture f;
    f.points = {{-50000, 75, 100, 0.0},
                {-50000, 75, 100, 0.0},
                {50000, 75, 100, 0.0},
                {50000, 75, 100, 0.0}};
    f.ways = QList<Waypoint>(7);
    f.open();
    f.paint();
    QCOMPARE(placeOf(f.ways.at(3)), QPoint(0, 75));
    // The curve crosses the whole picture level.
    const QColor c = f.planColour(120, 75);
    QVERIFY2(c.red() > c.green() + 40 && c.blue() > c.green() + 40, qPrintable(c.name()));
}

QTEST_MAIN(TestSetFlightPathDialogWaypoints)
#include "test_setflightpathdialog_waypoints.moc"
