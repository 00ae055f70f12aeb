#include "flight/figures.h"
#include "patheditors/editorfixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

QScrollBar *bar(const EditorFixture &f, const char *name)
{
    return f.profile->findChild<QScrollBar *>(name);
}

} // namespace

class TestSetFlightPathProfileDialog : public QObject {
    Q_OBJECT

private slots:
    void formHasItsTexts();
    void userCannotEndTheWindow();
    void scrollRangesFollowTheProfile();
    void noPointsChangeNothing();
    void onePointHasNoLength();
    void stationsAreRebuilt();
    void heightFollowsTheDrag();
    void curveFollowsWithinASecond();
    void clickChangesNoPoints();
    void releaseOutsideKeepsTheDrag();
    void handleDraggedUpLooksUp();
    void handleOnTheSpotStaysInHand();
    void cursorTellsWhatIsUnderThePointer();
    void labelIsClearedOutside();
    void focusTiltsAllWaypoints();
    void menuHasOneEntry();
    void pictureShowsThePath();
    void scrolledProfileKeepsItsPlaces();
    void pointsDeletedInThePlanEndADrag();
    void terrainThatDoesNotMatchIsBorne();
};

void TestSetFlightPathProfileDialog::formHasItsTexts()
{
    EditorFixture f;
    f.open();
    QCOMPARE(f.profile->windowTitle(), "Set Flight Path: Vertical Profile");
    QCOMPARE(f.profileText(), "0/0");
    QVERIFY(f.profile->hasMouseTracking());
    const auto *timer = f.profile->findChild<QTimer *>();
    QVERIFY(timer && timer->isActive() && !timer->isSingleShot());
    QCOMPARE(timer->interval(), 1000);
    const auto *across = bar(f, "horizontalScrollBar");
    const auto *up = bar(f, "verticalScrollBar");
    QCOMPARE(across->x(), 200);
    QCOMPARE(across->geometry().right() + 1, up->x());
    QCOMPARE(across->geometry().bottom(), 399);
    QCOMPARE(up->geometry().right(), 599);
    QCOMPARE(up->geometry().bottom() + 1, across->y());
}

void TestSetFlightPathProfileDialog::userCannotEndTheWindow()
{
    EditorFixture f;
    f.openLevel();
    f.profile->close();
    QVERIFY(f.profile->isVisible());
    QTest::keyClick(f.profile, Qt::Key_Escape);
    QTest::keyClick(f.profile->windowHandle(), Qt::Key_Escape);
    QVERIFY(f.profile->isVisible());
    QVERIFY(f.plan->isVisible());
}

void TestSetFlightPathProfileDialog::scrollRangesFollowTheProfile()
{
    EditorFixture f;
    f.open();
    const int barWidth = bar(f, "verticalScrollBar")->width();
    // Without points: length 800, heights 0 to 100, 600 by 400.
    QCOMPARE(bar(f, "horizontalScrollBar")->minimum(), -100);
    QCOMPARE(bar(f, "horizontalScrollBar")->maximum(),
             800 + 200 - 1 + barWidth + 100 - 599);
    QCOMPARE(bar(f, "verticalScrollBar")->minimum(), 100);
    QCOMPARE(bar(f, "verticalScrollBar")->maximum(), 100);
    f.profile->resize(520, 240);
    QCOMPARE(bar(f, "verticalScrollBar")->maximum(), 160);

    EditorFixture g;
    g.openLevel();
    g.profile->resize(300, 240);
    g.paint();
    QCOMPARE(bar(g, "horizontalScrollBar")->maximum(),
             180 + 200 - 1 + barWidth + 100 - 299);
    // Nothing lies above the points at 100, the terrain begins at 0.
    QCOMPARE(bar(g, "verticalScrollBar")->maximum(), 100 + 300 - 1 - 0 - 239);
}

void TestSetFlightPathProfileDialog::noPointsChangeNothing()
{
    EditorFixture f;
    f.open();
    f.choosePlan(50, 50, "Eyes Front"); // disabled
    f.chooseProfile(10, 10, "Focus");
    f.paint();
    QVERIFY(f.points.isEmpty() && f.ways.isEmpty());
}

void TestSetFlightPathProfileDialog::onePointHasNoLength()
{
    EditorFixture f;
    f.points = {{150, 75, 100, 77.0}};
    f.open();
    f.paint();
    QCOMPARE(f.points[0].i, 0.0);
    const int barWidth = bar(f, "verticalScrollBar")->width();
    QCOMPARE(bar(f, "horizontalScrollBar")->maximum(),
             qMax(-100, 0 + 200 - 1 + barWidth + 100 - 599));
    const QColor ring = f.profileColour(-9, 100);
    QVERIFY2(ring.red() > 150 && ring.green() > 130 && ring.blue() < 120,
             qPrintable(ring.name()));
    QVERIFY(f.ways.isEmpty());
}

void TestSetFlightPathProfileDialog::stationsAreRebuilt()
{
    EditorFixture f;
    f.openLevel();
    for (int k = 0; k < 4; ++k)
        QCOMPARE(f.points[k].i, 60.0 * k);
    for (int k = 0; k < 7; ++k) {
        QCOMPARE(f.ways[k].i, 30.0 * k);
        QCOMPARE(f.ways[k].z, 100);
        QCOMPARE(f.ways[k].x, 30 * k);
    }
}

void TestSetFlightPathProfileDialog::heightFollowsTheDrag()
{
    EditorFixture f;
    f.openLevel();
    f.pressProfile(60, 100);
    f.moveProfile(62, 104);
    QCOMPARE(f.points[1].z, 104);
    f.paint();
    QCOMPARE(f.points[1].i, 60.0); // not moved along the path
    f.moveProfile(90, 150);
    QCOMPARE(f.profileText(), "90/150");
    f.paint();
    f.releaseProfile(90, 160);
    QCOMPARE(f.points[1].z, 160);
    QCOMPARE(f.points[1].x, 60);
    f.moveProfile(90, 50);
    QCOMPARE(f.points[1].z, 160);
}

void TestSetFlightPathProfileDialog::curveFollowsWithinASecond()
{
    EditorFixture f;
    f.openLevel();
    f.points[1].z = 260;
    // The middle: 100 + 160 * 3/8. Nobody but the timer asks for the repaint.
    QTRY_COMPARE_WITH_TIMEOUT(f.ways[3].z, 160, 1900);
}

void TestSetFlightPathProfileDialog::clickChangesNoPoints()
{
    EditorFixture f;
    f.openLevel();
    const QList<ControlPoint> before = f.points;
    f.pressProfile(60, 100);
    f.releaseProfile(60, 100);
    f.pressProfile(90, 50);
    f.releaseProfile(90, 50);
    QCOMPARE(f.points, before);
    QCOMPARE(f.profileText(), "90/50");
}

void TestSetFlightPathProfileDialog::releaseOutsideKeepsTheDrag()
{
    EditorFixture f;
    f.openLevel();
    f.pressProfile(60, 100);
    f.moveProfile(60, 101);
    f.paint();
    f.releaseProfile(60, 202); // the range ends at 101 + 100, exclusively
    QCOMPARE(f.profileText(), QString());
    f.moveProfile(60, 130);
    QCOMPARE(f.points[1].z, 130);
}

void TestSetFlightPathProfileDialog::handleDraggedUpLooksUp()
{
    EditorFixture f;
    f.openLevel();
    // Waypoint 3 at station 90 and height 100 looks ahead: its handle is at 130.
    f.pressProfile(130, 100);
    f.moveProfile(131, 101);
    f.moveProfile(90, 140);
    QVERIFY(near(f.ways[3].p, Pi / 2));
    QCOMPARE(f.profileText(), QStringLiteral("90.0\u00b0"));
    f.releaseProfile(130, 140);
    QVERIFY(near(f.ways[3].p, Pi / 4));
    f.moveProfile(130, 60);
    QVERIFY(near(f.ways[3].p, Pi / 4));
}

void TestSetFlightPathProfileDialog::handleOnTheSpotStaysInHand()
{
    EditorFixture f;
    f.openLevel();
    f.pressProfile(130, 100);
    f.moveProfile(130, 101);
    const double before = f.ways[3].p;
    f.moveProfile(90, 100);
    f.releaseProfile(90, 100);
    QCOMPARE(f.ways[3].p, before);
    f.moveProfile(90, 140);
    QVERIFY(near(f.ways[3].p, Pi / 2));
}

void TestSetFlightPathProfileDialog::cursorTellsWhatIsUnderThePointer()
{
    EditorFixture f;
    f.openLevel();
    f.moveProfile(60, 100);
    QCOMPARE(f.profile->cursor().shape(), Qt::CrossCursor);
    f.moveProfile(130, 100);
    // A control point stands 10 away from there, and points come first.
    QCOMPARE(f.profile->cursor().shape(), Qt::CrossCursor);
    f.moveProfile(131, 102);
    QCOMPARE(f.profile->cursor().shape(), Qt::BitmapCursor);
    QCOMPARE(f.profile->cursor().hotSpot(), QPoint(9, 15));
    f.moveProfile(40, 30);
    QCOMPARE(f.profile->cursor().shape(), Qt::ArrowCursor);
}

void TestSetFlightPathProfileDialog::labelIsClearedOutside()
{
    EditorFixture f;
    f.openLevel();
    f.moveProfile(10, 10);
    QCOMPARE(f.profileText(), "10/10");
    f.moveProfile(-100, 10);
    QCOMPARE(f.profileText(), "-100/10");
    f.moveProfile(-101, 10);
    QCOMPARE(f.profileText(), QString());
    f.moveProfile(10, 199);
    QCOMPARE(f.profileText(), "10/199");
    f.moveProfile(10, 200);
    QCOMPARE(f.profileText(), QString());
}

void TestSetFlightPathProfileDialog::focusTiltsAllWaypoints()
{
    EditorFixture f;
    f.openLevel();
    f.ways[3].p = 0.25;
    f.chooseProfile(90, 100, "Focus"); // where waypoint 3 stands
    QCOMPARE(f.ways[3].p, 0.25);
    f.chooseProfile(90, 40, "Focus");
    QVERIFY(near(f.ways[3].p, -Pi / 2));
    QVERIFY(near(f.ways[1].p, -Pi / 4));
    QVERIFY(near(f.ways[5].p, -0.75 * Pi));
}

void TestSetFlightPathProfileDialog::menuHasOneEntry()
{
    EditorFixture f;
    f.open();
    QContextMenuEvent event(QContextMenuEvent::Mouse, {250, 50}, {450, 250});
    QCoreApplication::sendEvent(f.profile, &event);
    const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->actions().at(0)->text(), "Focus");
    f.pressButton("pushButtonOK"); // ends the profile under its open menu
}

void TestSetFlightPathProfileDialog::pictureShowsThePath()
{
    EditorFixture f;
    f.openLevel();
    for (Waypoint &w : f.ways)
        w.p = Pi / 2; // so that no handle lies on the curve
    f.paint();
    const QColor ring = f.profileColour(120, 100 - 9);
    QVERIFY2(ring.red() > 150 && ring.green() > 130 && ring.blue() < 120,
             qPrintable(ring.name()));
    const QColor curve = f.profileColour(75, 100);
    QVERIFY2(curve.red() > curve.green() + 40 && curve.blue() > curve.green() + 40,
             qPrintable(curve.name()));
    // The terrain is at half the station.
    bool dark = false;
    for (int h = 68; h <= 72; ++h)
        dark = dark || f.profileColour(140, h).lightness() < 150;
    QVERIFY(dark);
    const QColor ground = f.profile->palette().color(QPalette::Window);
    QCOMPARE(f.profileColour(140, 30), ground);
    // A pitch of a quarter turn leads straight up.
    const QColor handle = f.profileColour(90, 120);
    QVERIFY2(handle.red() > 180 && handle.blue() > 180 && handle.green() < 170,
             qPrintable(handle.name()));
}

void TestSetFlightPathProfileDialog::scrolledProfileKeepsItsPlaces()
{
    EditorFixture f;
    f.openLevel();
    f.profile->resize(320, 200);
    f.paint();
    bar(f, "horizontalScrollBar")->setValue(30);
    bar(f, "verticalScrollBar")->setValue(180);
    f.paint();
    f.moveProfile(60, 100);
    QCOMPARE(f.profileText(), "60/100");
    QCOMPARE(f.profile->cursor().shape(), Qt::CrossCursor);
}

void TestSetFlightPathProfileDialog::pointsDeletedInThePlanEndADrag()
{
    EditorFixture f;
    f.openLevel();
    f.pressProfile(180, 100);
    f.moveProfile(180, 101);
    f.points.clear();
    f.ways.clear();
    f.paint();
    f.moveProfile(100, 60);
    f.releaseProfile(100, 60);
    f.paint();
    QVERIFY(f.points.isEmpty());
}

void TestSetFlightPathProfileDialog::terrainThatDoesNotMatchIsBorne()
{
    EditorFixture f;
    f.points = {{0, 0, 100, 0.0},
                {900, 900, 100, 0.0},
                {-900, 20, 100, 0.0},
                {500, -600, 100, 0.0}};
    f.ways = QList<Waypoint>(7);
    f.zScale = 1e9;
    f.open(1000, 1000);
    f.paint();
    QCOMPARE(f.ways[6].z, 100);
    f.pressButton("pushButtonOK");
}

QTEST_MAIN(TestSetFlightPathProfileDialog)
#include "test_setflightpathprofiledialog.moc"
