#include "flightpath/editorfixture.h"
#include "support/modalanswer.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double Pi = 3.141592653589793;
constexpr qint32 Most = std::numeric_limits<qint32>::max();
constexpr qint32 Least = std::numeric_limits<qint32>::min();

bool near(double a, double b) { return std::abs(a - b) < 1e-9; }
QPoint placeOf(const Waypoint &w) { return {w.x, w.y}; }
QPoint placeOf(const ControlPoint &p) { return {p.x, p.y}; }

} // namespace

class TestSetFlightPathDialog : public QObject {
    Q_OBJECT

private slots:
    // Construction and leaving
    void missingTextureIsReported();
    void emptyTextureNameIsReported();
    void missingElevationIsReported();
    void windowsStandWhereTheyWereLeft();
    void formHasItsTexts();
    void actionsStartAsTheListsDemand_data();
    void actionsStartAsTheListsDemand();
    void okAcceptsAndDestroysTheProfile();
    void cancelAcceptsNothing();
    void closingAcceptsNothing();
    void escapeDoesNotClose();
    void okUnwrapsTheHeadings();
    // Pointer and keys
    void fourthClickMakesTheCurve();
    void clickOnAPointDeletesIt();
    void deletingDownToThreePointsClearsTheWaypoints();
    void otherButtonsDoNothing();
    void pointFollowsTheDrag();
    void dragBeginsWithTheMoveNotThePress();
    void releaseOutsideKeepsTheDrag();
    void clickWithPlusInsertsBefore();
    void releaseWithPlusInsertsAndDragsOn();
    void directionHandleIsDragged();
    void directionOnTheSpotStaysInHand();
    void cursorTellsWhatIsUnderThePointer();
    void minusEndsPlus();
    void labelTellsTheImageRow();
    void labelIsClearedOutsideThePicture();
    void scrolledPictureKeepsItsPlaces();
    // Menu
    void menuHasItsEntries();
    void doublingUpToLevelFive();
    void halvingDownToLevelZero();
    void eyesFrontSetsHeadingAndPitch();
    void focusTurnsAllWaypointsToThePointer();
    // Painting
    void pictureShowsThePath();
    void coinciding();
    void threePointsShowNoCurve();
    void fractionsOfAPixelCountAsThatPixel();
    // Odd input
    void extremeNumbersAreBorne();
    void pointsFarOutsideAreBorne();
    void smallestTextureIsBorne();
    void deletingEveryPointDuringADragIsBorne();
    void halvingWithADirectionInHandIsBorne();
};

void TestSetFlightPathDialog::missingTextureIsReported()
{
    EditorFixture f;
    ModalAnswers answers;
    answers.pressButton("Error", "Could not open file \"no.png\".", QMessageBox::Ok);
    const SetFlightPathDialog dialog(f.points, f.ways, f.level, 1, 1, "no.png",
                                     f.elevation(), 1, 1);
    QVERIFY(dialog.error());
    QVERIFY(!dialog.profile());
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSetFlightPathDialog::emptyTextureNameIsReported()
{
    EditorFixture f;
    ModalAnswers answers;
    answers.pressButton("Error", "Could not open file \"\".", QMessageBox::Ok);
    SetFlightPathDialog dialog(f.points, f.ways, f.level, 1, 1, "", f.elevation(), 1, 1);
    QVERIFY(dialog.error());
    dialog.resize(300, 200);
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSetFlightPathDialog::missingElevationIsReported()
{
    EditorFixture f;
    ModalAnswers answers;
    answers.pressButton("Error", "Could not open file \"none\".", QMessageBox::Ok);
    const SetFlightPathDialog dialog(f.points, f.ways, f.level, 1, 1, f.texture(), "none",
                                     1, 1);
    QVERIFY(dialog.error());
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSetFlightPathDialog::windowsStandWhereTheyWereLeft()
{
    EditorFixture f;
    f.open();
    QCOMPARE(f.plan->pos(), QPoint(100, 100));
    QCOMPARE(f.plan->size(), QSize(600, 400));
    QCOMPARE(f.profile->pos(), QPoint(200, 200));
    QCOMPARE(f.profile->size(), QSize(600, 400));
    f.plan->move(40, 50);
    f.plan->resize(500, 350);
    f.profile->move(60, 70);
    f.profile->resize(520, 240);
    f.pressButton("pushButtonCancel");
    f.open();
    QCOMPARE(f.plan->pos(), QPoint(40, 50));
    QCOMPARE(f.plan->size(), QSize(500, 350));
    QCOMPARE(f.profile->pos(), QPoint(60, 70));
    QCOMPARE(f.profile->size(), QSize(520, 240));
    QSettings stored("Kolvenar", "Zephrant");
    QCOMPARE(stored.value("SetFlightPathDialog/Position"), QVariant(QPoint(40, 50)));
    QCOMPARE(stored.value("SetFlightPathProfileDialog/Size"), QVariant(QSize(520, 240)));
}

void TestSetFlightPathDialog::formHasItsTexts()
{
    EditorFixture f;
    f.open();
    QCOMPARE(f.plan->windowTitle(), "Set Flight Path");
    QVERIFY(!f.plan->isModal());
    QCOMPARE(f.planText(), "0/0");
    const auto *ok = f.plan->findChild<QPushButton *>("pushButtonOK");
    QCOMPARE(ok->text(), "&OK");
    QCOMPARE(ok->geometry(), QRect(20, 10, 75, 23));
    QCOMPARE(ok->toolTip(), "Close the dialog and accept the flight path");
    const auto *area = f.plan->findChild<QScrollArea *>();
    QCOMPARE(area->geometry(), QRect(115, 0, 485, 400));
    f.pressButton("pushButtonHelp");
    QVERIFY(f.plan->isVisible());
}

void TestSetFlightPathDialog::actionsStartAsTheListsDemand_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("add");
    QTest::addColumn<bool>("remove");
    QTest::addColumn<bool>("views");
    QTest::newRow("nothing") << 0 << 0 << false << false << false;
    QTest::newRow("three points") << 3 << 2 << false << true << false;
    QTest::newRow("four points") << 4 << 0 << true << false << true;
    QTest::newRow("level one") << 5 << 1 << true << true << true;
    QTest::newRow("level five") << 5 << 5 << false << true << true;
}

void TestSetFlightPathDialog::actionsStartAsTheListsDemand()
{
    QFETCH(int, points);
    QFETCH(int, level);
    EditorFixture f;
    for (int i = 0; i < points; ++i)
        f.points.append({20 * i, 10 * i, 100, 0.0});
    f.level = level;
    f.ways = QList<Waypoint>(3 * (2 << level) + 1);
    f.open();
    QTEST(f.action("actionAddWaypoints")->isEnabled(), "add");
    QTEST(f.action("actionRemoveWaypoints")->isEnabled(), "remove");
    QTEST(f.action("actionEyesFront")->isEnabled(), "views");
    QTEST(f.action("actionFocus")->isEnabled(), "views");
    QCOMPARE(f.ways.isEmpty(), points < 4);
}

void TestSetFlightPathDialog::okAcceptsAndDestroysTheProfile()
{
    EditorFixture f;
    f.openSquare();
    const QPointer<QWidget> profile(f.profile);
    QSignalSpy accepted(f.plan.get(), &SetFlightPathDialog::pathAccepted);
    f.pressButton("pushButtonOK");
    QCOMPARE(accepted.size(), 1);
    QVERIFY(!f.plan->isVisible());
    QVERIFY(!profile);
    QVERIFY(!f.plan->profile());
}

void TestSetFlightPathDialog::cancelAcceptsNothing()
{
    EditorFixture f;
    f.openSquare();
    const QPointer<QWidget> profile(f.profile);
    QSignalSpy accepted(f.plan.get(), &SetFlightPathDialog::pathAccepted);
    f.pressButton("pushButtonCancel");
    QVERIFY(accepted.isEmpty());
    QVERIFY(!f.plan->isVisible());
    QVERIFY(!profile);
}

void TestSetFlightPathDialog::closingAcceptsNothing()
{
    EditorFixture f;
    f.openSquare();
    const QPointer<QWidget> profile(f.profile);
    QSignalSpy accepted(f.plan.get(), &SetFlightPathDialog::pathAccepted);
    f.plan->resize(640, 480);
    f.plan->close();
    QVERIFY(accepted.isEmpty());
    QVERIFY(!f.plan->isVisible());
    QVERIFY(!profile);
    QCOMPARE(QSettings("Kolvenar", "Zephrant").value("SetFlightPathDialog/Size"),
             QVariant(QSize(640, 480)));
}

void TestSetFlightPathDialog::escapeDoesNotClose()
{
    EditorFixture f;
    f.open();
    QTest::keyClick(f.plan->windowHandle(), Qt::Key_Escape);
    QTest::keyClick(f.plan.get(), Qt::Key_Escape);
    QVERIFY(f.plan->isVisible());
    QVERIFY(f.profile->isVisible());
}

void TestSetFlightPathDialog::okUnwrapsTheHeadings()
{
    EditorFixture f;
    f.openSquare();
    f.ways[3].a = 3.1;
    f.ways[4].a = -3.1;
    f.pressButton("pushButtonOK");
    QCOMPARE(f.ways[3].a, 3.1);
    QVERIFY(near(f.ways[4].a, 3.1831853071795862));
}

void TestSetFlightPathDialog::fourthClickMakesTheCurve()
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

void TestSetFlightPathDialog::clickOnAPointDeletesIt()
{
    EditorFixture f;
    f.openSquare();
    f.clickPlan(106, 108); // within 10 pixels of the third
    QCOMPARE(f.points.size(), 3);
    QCOMPARE(placeOf(f.points.at(2)), QPoint(100, 20));
    QCOMPARE(f.plan->cursor().shape(), Qt::ArrowCursor);
}

void TestSetFlightPathDialog::deletingDownToThreePointsClearsTheWaypoints()
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

void TestSetFlightPathDialog::otherButtonsDoNothing()
{
    EditorFixture f;
    f.openSquare();
    f.clickPlan(60, 60, Qt::MiddleButton);
    f.clickPlan(20, 20, Qt::RightButton);
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialog::pointFollowsTheDrag()
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

void TestSetFlightPathDialog::dragBeginsWithTheMoveNotThePress()
{
    EditorFixture f;
    f.openSquare();
    f.pressPlan(60, 60); // on nothing
    f.movePlan(22, 98);  // onto the second point
    QCOMPARE(placeOf(f.points.at(1)), QPoint(22, 98));
    f.releasePlan(22, 98);
    QCOMPARE(f.points.size(), 4);
}

void TestSetFlightPathDialog::releaseOutsideKeepsTheDrag()
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

void TestSetFlightPathDialog::clickWithPlusInsertsBefore()
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

void TestSetFlightPathDialog::releaseWithPlusInsertsAndDragsOn()
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

void TestSetFlightPathDialog::directionHandleIsDragged()
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

void TestSetFlightPathDialog::directionOnTheSpotStaysInHand()
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

void TestSetFlightPathDialog::cursorTellsWhatIsUnderThePointer()
{
    EditorFixture f;
    f.openSquare();
    f.movePlan(20, 100);
    QCOMPARE(f.plan->cursor().shape(), Qt::CrossCursor);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QCOMPARE(f.plan->cursor().shape(), Qt::BitmapCursor);
    QCOMPARE(f.plan->cursor().hotSpot(), QPoint(15, 15));
    QCOMPARE(f.plan->cursor().bitmap().size(), QSize(32, 32));
    QTest::keyRelease(f.plan.get(), Qt::Key_Plus);
    QCOMPARE(f.plan->cursor().shape(), Qt::CrossCursor);
    f.movePlan(60, 120);
    QCOMPARE(f.plan->cursor().shape(), Qt::BitmapCursor);
    QCOMPARE(f.plan->cursor().hotSpot(), QPoint(15, 15));
    f.movePlan(150, 60);
    QCOMPARE(f.plan->cursor().shape(), Qt::ArrowCursor);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QCOMPARE(f.plan->cursor().shape(), Qt::ArrowCursor);
    f.movePlan(20, 100);
    QCOMPARE(f.plan->cursor().shape(), Qt::BitmapCursor);
    f.movePlan(150, 60);
    QTest::keyRelease(f.plan.get(), Qt::Key_Plus);
    QCOMPARE(f.plan->cursor().shape(), Qt::ArrowCursor);
}

void TestSetFlightPathDialog::minusEndsPlus()
{
    EditorFixture f;
    f.openSquare();
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QTest::keyClick(f.plan.get(), Qt::Key_Minus);
    f.clickPlan(20, 20);
    QCOMPARE(f.points.size(), 3);
}

void TestSetFlightPathDialog::labelTellsTheImageRow()
{
    EditorFixture f;
    f.open();
    f.movePlan(0, 149);
    QCOMPARE(f.planText(), "0/0");
    f.movePlan(199, 0);
    QCOMPARE(f.planText(), "199/149");
}

void TestSetFlightPathDialog::labelIsClearedOutsideThePicture()
{
    EditorFixture f;
    f.open();
    for (const QPoint &outside : {QPoint(200, 0), QPoint(0, 150), QPoint(3, -1)}) {
        f.movePlan(10, 10);
        QVERIFY(!f.planText().isEmpty());
        f.movePlan(outside.x(), outside.y());
        QCOMPARE(f.planText(), QString());
        f.clickPlan(outside.x(), outside.y());
    }
    QVERIFY(f.points.isEmpty());
}

void TestSetFlightPathDialog::scrolledPictureKeepsItsPlaces()
{
    EditorFixture f;
    f.open(1500, 1200);
    auto *area = f.plan->findChild<QScrollArea *>();
    area->horizontalScrollBar()->setValue(700);
    area->verticalScrollBar()->setValue(500);
    f.clickPlan(900, 600);
    QCOMPARE(placeOf(f.points.at(0)), QPoint(900, 600));
    QCOMPARE(f.planText(), "900/599");
    QVERIFY(f.planColour(909, 600) != QColor(100, 140, 90));
}

void TestSetFlightPathDialog::menuHasItsEntries()
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

void TestSetFlightPathDialog::doublingUpToLevelFive()
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

void TestSetFlightPathDialog::halvingDownToLevelZero()
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

void TestSetFlightPathDialog::eyesFrontSetsHeadingAndPitch()
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

void TestSetFlightPathDialog::focusTurnsAllWaypointsToThePointer()
{
    EditorFixture f;
    f.openSquare();
    f.ways[3].a = 0.75;
    f.choosePlan(60, 80, "Focus"); // where waypoint 3 stands
    QCOMPARE(f.ways[3].a, 0.75);
    QVERIFY(near(f.ways[0].a, std::atan2(40, 60)));
    QVERIFY(near(f.ways[6].a, std::atan2(-40, 60)));
}

void TestSetFlightPathDialog::pictureShowsThePath()
{
    EditorFixture f;
    f.openSquare();
    f.paint();
    // Control point: a yellow ring some 9.6 pixels from its middle.
    const QColor ring = f.planColour(20 - 9, 100);
    QVERIFY2(ring.red() > 150 && ring.green() > 130 && ring.blue() < 120,
             qPrintable(ring.name()));
    // Number 1 in it: yellow somewhere in the middle.
    bool yellow = false;
    for (int x = 15; x <= 25; ++x)
        for (int y = 94; y <= 106; ++y) {
            const QColor c = f.planColour(x, y);
            yellow = yellow || (c.red() > 220 && c.green() > 220 && c.blue() < 90);
        }
    QVERIFY(yellow);
    // The curve passes level through (60, 80); 8 pixels east it lies hardly lower.
    bool magenta = false;
    bool white = false;
    for (int y = 74; y <= 84; ++y) {
        const QColor c = f.planColour(69, y);
        magenta = magenta || (c.red() > c.green() + 40 && c.blue() > c.green() + 40);
        white = white || (c.red() > 200 && c.green() > 200 && c.blue() > 200);
    }
    QVERIFY(magenta);
    QVERIFY(white);
    // The direction of waypoint 3 leads north: blue at half its length.
    const QColor line = f.planColour(60, 100);
    QVERIFY2(line.blue() > line.red() + 50, qPrintable(line.name()));
    // Ends in a small blue disc; beyond is texture.
    const QColor disc = f.planColour(60, 120);
    QVERIFY2(disc.blue() > disc.red() + 50, qPrintable(disc.name()));
    QCOMPARE(f.planColour(60, 130), QColor(100, 140, 90));
    QCOMPARE(f.planColour(150, 75), QColor(100, 140, 90));
}

void TestSetFlightPathDialog::coinciding()
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

void TestSetFlightPathDialog::threePointsShowNoCurve()
{
    EditorFixture f;
    f.points = {{20, 20, 100, 0.0}, {20, 100, 100, 0.0}, {100, 100, 100, 0.0}};
    f.open();
    QVERIFY(f.planColour(11, 100) != QColor(100, 140, 90));
    QCOMPARE(f.planColour(60, 80), QColor(100, 140, 90));
    QVERIFY(f.ways.isEmpty());
}

void TestSetFlightPathDialog::fractionsOfAPixelCountAsThatPixel()
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

void TestSetFlightPathDialog::extremeNumbersAreBorne()
{
    EditorFixture f;
    f.points = {{Most, Least, Most, 0.0},  {Least, Most, Least, 0.0},
                {Most, Most, Most, 0.0},   {Least, Least, Least, 0.0},
                {Most, Least, Least, 0.0}, {100, 75, 100, 0.0}};
    f.ways = QList<Waypoint>(7, Waypoint(Most, Least, Most, 1e308, -1e308));
    f.open();
    f.movePlan(100, 75);
    f.dragPlan({{100, 75}, {90, 70}});
    f.choosePlan(60, 60, "Eyes Front");
    f.choosePlan(60, 60, "Add Waypoints");
    f.choosePlan(60, 60, "Focus");
    f.paint();
    QCOMPARE(f.ways.size(), 13);
    QVERIFY(!f.planPicture().isNull());
    f.pressButton("pushButtonOK");
}

void TestSetFlightPathDialog::pointsFarOutsideAreBorne()
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

void TestSetFlightPathDialog::smallestTextureIsBorne()
{
    EditorFixture f;
    f.open(1, 1);
    f.movePlan(0, 0);
    QCOMPARE(f.planText(), "0/0");
    f.clickPlan(0, 0);
    QCOMPARE(f.points.size(), 1);
    f.clickPlan(0, 0);
    QVERIFY(f.points.isEmpty());
    f.points = QList<ControlPoint>(5, ControlPoint(0, 0, 100, 0.0));
    f.clickPlan(0, 0);
    f.paint();
    QCOMPARE(f.points.size(), 4);
    QCOMPARE(f.ways.size(), 7);
}

void TestSetFlightPathDialog::deletingEveryPointDuringADragIsBorne()
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

void TestSetFlightPathDialog::halvingWithADirectionInHandIsBorne()
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

QTEST_MAIN(TestSetFlightPathDialog)
#include "test_setflightpathdialog.moc"
