#include "flight/figures.h"
#include "patheditors/editorfixture.h"
#include "support/modalanswer.h"

#include <QAction>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

class TestSetFlightPathDialog : public QObject {
    Q_OBJECT

private slots:
    // Construction and leaving
    void missingTextureIsReported();
    void emptyTextureNameIsReported();
    void missingElevationIsReported();
    void windowsStandWhereTheyWereLeft();
    void windowsStoredOffEveryScreenComeBack();
    void formHasItsTexts();
    void actionsStartAsTheListsDemand_data();
    void actionsStartAsTheListsDemand();
    void okAcceptsAndDestroysTheProfile();
    void cancelAcceptsNothing();
    void closingAcceptsNothing();
    void escapeDoesNotClose();
    void okUnwrapsTheHeadings();
    // Pointer
    void cursorTellsWhatIsUnderThePointer();
    void labelTellsTheImageRow();
    void labelIsClearedOutsideThePicture();
    void scrolledPictureKeepsItsPlaces();
    // Odd input
    void extremeNumbersAreBorne();
    void smallestTextureIsBorne();
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

void TestSetFlightPathDialog::windowsStoredOffEveryScreenComeBack()
{
    EditorFixture f;
    QSettings stored("Kolvenar", "Zephrant");
    stored.setValue("SetFlightPathDialog/Position", QPoint(9000, 50));
    stored.setValue("SetFlightPathProfileDialog/Position", QPoint(60, -9000));
    f.open();
    const QRect screen = f.plan->screen()->availableGeometry();
    QVERIFY(screen.contains(f.plan->frameGeometry()));
    QVERIFY(screen.contains(f.profile->frameGeometry()));
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

QTEST_MAIN(TestSetFlightPathDialog)
#include "test_setflightpathdialog.moc"
