#include "flight/figures.h"
#include "patheditors/editorfixture.h"

#include <QAction>
#include <QMouseEvent>
#include <QTest>

/// Setting, moving, inserting and deleting control points.
class TestSetFlightPathDialogPoints : public QObject {
    Q_OBJECT

private slots:
    // Clicks
    void fourthClickMakesTheCurve();
    void clickOnAPointDeletesIt();
    void deletingDownToThreePointsClearsTheWaypoints();
    void otherButtonsDoNothing();
    void fractionsOfAPixelCountAsThatPixel();
    void threePointsShowNoCurve();
    // Drags
    void pointFollowsTheDrag();
    void dragBeginsWithTheMoveNotThePress();
    void releaseOutsideKeepsTheDrag();
    void deletingEveryPointDuringADragIsBorne();
    // Plus and minus
    void clickWithPlusInsertsBefore();
    void releaseWithPlusInsertsAndDragsOn();
    void minusEndsPlus();
};

void TestSetFlightPathDialogPoints::fourthClickMakesTheCurve()
{
    EditorFixture f;
    f.open();
    const QList<QPoint> clicks{{20, 20}, {20, 100}, {100, 100}, {100, 20}};
    for (const QPoint &at : clicks)
        f.clickPlan(at.x(), at.y());
    QCOMPARE(f.points.size(), 4);
    QCOMPARE(placeOf(f.points.at(2)), QPoint(100, 100));
    QCOMPARE(f.points.at(2).z, 100);
    QVERIFY(f.action("actionAddWaypoints")->isEnabled());
    QVERIFY(f.action("actionEyesFront")->isEnabled());
    f.paint();
    QCOMPARE(f.ways.size(), 7);
    QCOMPARE(placeOf(f.ways.at(3)), QPoint(60, 80));
    QCOMPARE(placeOf(f.ways.at(6)), QPoint(100, 20));
    QCOMPARE(f.ways.at(3).z, 100);
    QCOMPARE(f.ways.at(6).i, 240.0);
    QCOMPARE(f.plan->cursor().shape(), Qt::CrossCursor);
}

void TestSetFlightPathDialogPoints::clickOnAPointDeletesIt()
{
    EditorFixture f;
    f.openSquare();
    f.clickPlan(106, 108); // within 10 pixels of the third
    QCOMPARE(f.points.size(), 3);
    QCOMPARE(placeOf(f.points.at(2)), QPoint(100, 20));
    QCOMPARE(f.plan->cursor().shape(), Qt::ArrowCursor);
}

void TestSetFlightPathDialogPoints::deletingDownToThreePointsClearsTheWaypoints()
{
    EditorFixture f;
    f.level = 2;
    f.openSquare();
    f.paint();
    QCOMPARE(f.ways.size(), 25);
    f.clickPlan(20, 20);
    f.paint();
    QVERIFY(f.ways.isEmpty());
    QCOMPARE(f.level, 2);
    QVERIFY(!f.action("actionAddWaypoints")->isEnabled());
    QVERIFY(!f.action("actionEyesFront")->isEnabled());
    QVERIFY(!f.action("actionFocus")->isEnabled());
    f.clickPlan(20, 20);
    f.paint();
    QCOMPARE(f.ways.size(), 25);
}

void TestSetFlightPathDialogPoints::otherButtonsDoNothing()
{
    EditorFixture f;
    f.openSquare();
    f.clickPlan(60, 60, Qt::MiddleButton);
    f.clickPlan(20, 20, Qt::RightButton);
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialogPoints::fractionsOfAPixelCountAsThatPixel()
{
    EditorFixture f;
    f.open();
    auto *picture = f.plan->findChild<QLabel *>("labelImage");
    const auto click = [&](const QPointF &at) {
        QMouseEvent event(QEvent::MouseButtonRelease, at, picture->mapToGlobal(at),
                          Qt::LeftButton, {}, {});
        QCoreApplication::sendEvent(picture, &event);
    };
    click({30.5, 49.5});
    click({199.5, 149.5}); // the last pixel still
    click({200.0, 100.0});
    QCOMPARE(f.points.size(), 2);
    QCOMPARE(placeOf(f.points.at(0)), QPoint(30, 100));
    QCOMPARE(placeOf(f.points.at(1)), QPoint(199, 0));
}

void TestSetFlightPathDialogPoints::threePointsShowNoCurve()
{
    EditorFixture f;
    f.points = {{20, 20, 100, 0.0}, {20, 100, 100, 0.0}, {100, 100, 100, 0.0}};
    f.open();
    QVERIFY(f.planColour(11, 100) != QColor(100, 140, 90));
    QCOMPARE(f.planColour(60, 80), QColor(100, 140, 90));
    QVERIFY(f.ways.isEmpty());
}

void TestSetFlightPathDialogPoints::pointFollowsTheDrag()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(20, 100);
    f.movePlan(25, 104);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(25, 104));
    f.movePlan(60, 120);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(60, 120));
    QCOMPARE(f.planText(), "60/29");
    f.releasePlan(61, 121);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(61, 121));
    QCOMPARE(f.points.size(), 4);
    f.movePlan(90, 90);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(61, 121));
    f.paint();
    // 20/8 + 3 * 61/8 + 3 * 100/8 + 100/8, 20/8 + 3 * 121/8 + 3 * 100/8 + 20/8
    QCOMPARE(placeOf(f.ways.at(3)), QPoint(75, 88));
}

void TestSetFlightPathDialogPoints::dragBeginsWithTheMoveNotThePress()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(60, 60); // on nothing
    f.movePlan(22, 98);  // onto the second point
    QCOMPARE(placeOf(f.points.at(1)), QPoint(22, 98));
    f.releasePlan(22, 98);
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialogPoints::releaseOutsideKeepsTheDrag()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(20, 100);
    f.movePlan(20, 101);
    f.movePlan(20, 170);
    QCOMPARE(f.planText(), QString());
    f.releasePlan(20, 170);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(20, 101));
    f.movePlan(33, 44); // no button is held, and still
    QCOMPARE(placeOf(f.points.at(1)), QPoint(33, 44));
    f.clickPlan(33, 44);
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialogPoints::deletingEveryPointDuringADragIsBorne()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(100, 20);
    f.movePlan(101, 21);
    f.points.clear();
    f.paint();
    f.movePlan(120, 60);
    QVERIFY(f.points.isEmpty());
    f.releasePlan(120, 60);
    QCOMPARE(f.points.size(), 1);
    QVERIFY(f.ways.isEmpty());
}

void TestSetFlightPathDialogPoints::clickWithPlusInsertsBefore()
{
    EditorFixture f;
    f.openSquare();
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    f.clickPlan(102, 101);
    QTest::keyRelease(f.plan.get(), Qt::Key_Plus);
    QCOMPARE(f.points.size(), 5);
    QCOMPARE(placeOf(f.points.at(2)), QPoint(102, 101));
    QCOMPARE(f.points.at(2).z, 100);
    QCOMPARE(placeOf(f.points.at(3)), QPoint(100, 100));
}

void TestSetFlightPathDialogPoints::releaseWithPlusInsertsAndDragsOn()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(20, 100);
    f.movePlan(21, 101);
    f.movePlan(30, 110);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    f.releasePlan(30, 110);
    QCOMPARE(f.points.size(), 5);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(30, 110));
    QTest::keyRelease(f.plan.get(), Qt::Key_Plus);
    f.movePlan(50, 50);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(50, 50));
    QCOMPARE(placeOf(f.points.at(2)), QPoint(30, 110));
    f.clickPlan(50, 50);
    f.movePlan(70, 70);
    QCOMPARE(placeOf(f.points.at(1)), QPoint(50, 50));
}

void TestSetFlightPathDialogPoints::minusEndsPlus()
{
    EditorFixture f;
    f.openSquare();
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QTest::keyClick(f.plan.get(), Qt::Key_Minus);
    f.clickPlan(20, 20);
    QCOMPARE(f.points.size(), 3);
}

QTEST_MAIN(TestSetFlightPathDialogPoints)
#include "test_setflightpathdialog_points.moc"
