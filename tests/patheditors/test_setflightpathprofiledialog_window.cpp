#include "patheditors/editorfixture.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

/// Scrolling and colours of the profile's window.
class TestSetFlightPathProfileDialogWindow : public QObject {
    Q_OBJECT

private slots:
    void barsStepAndPage();
    void wheelScrollsUpwardAndAlong();
    void wheelScrollsAlongWhereNothingIsAbove();
    void wheelMovesNothingUnderADrag();
    void wheelRestsWhereABarEnds();
    void keysScrollOnceTabHasLedToABar();
    void darkPaletteLeavesALightGround();
    void paletteMayChangeMeanwhile();
};

namespace {

QScrollBar *bar(const EditorFixture &f, const char *name)
{
    return f.profile->findChild<QScrollBar *>(name);
}

// A window that shows a part of the path, whichever way it is scrolled.
void openNarrow(EditorFixture &f)
{
    f.openLow();
    f.profile->resize(300, 200);
    f.paint();
}

void turnWheel(QWidget *over, const QPoint &turn, const QPointF &at = {250, 100})
{
    QWheelEvent event(at, over->mapToGlobal(at), {}, turn, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(over, &event);
}

QPalette darkPalette()
{
    QPalette dark(QColor(42, 46, 50));
    dark.setColor(QPalette::WindowText, Qt::white);
    return dark;
}

// Of the picture where nothing is drawn, and of the label's text.
void checkColours(const EditorFixture &f)
{
    const QColor ground = f.profileColour(140, 30);
    QVERIFY2(ground.lightness() > 200, qPrintable(ground.name()));
    const auto *label = f.profile->findChild<QLabel *>("labelCoordinates");
    const QColor text = label->palette().color(label->foregroundRole());
    QVERIFY2(text.lightness() < 60, qPrintable(text.name()));
}

} // namespace

void TestSetFlightPathProfileDialogWindow::barsStepAndPage()
{
    EditorFixture f;
    f.openLow();
    const auto *across = bar(f, "horizontalScrollBar");
    const auto *up = bar(f, "verticalScrollBar");
    QCOMPARE(across->singleStep(), 20);
    QCOMPARE(up->singleStep(), 20);
    QCOMPARE(across->pageStep(), across->width());
    QCOMPARE(up->pageStep(), up->height());
    f.profile->resize(480, 300);
    QCOMPARE(across->pageStep(), 480 - 200 - up->width());
    QCOMPARE(up->pageStep(), 300 - across->height());
    const QScrollArea *area = f.plan->findChild<QScrollArea *>();
    for (const QScrollBar *b : {area->horizontalScrollBar(), area->verticalScrollBar()})
        QCOMPARE(b->singleStep(), 20);
    QCOMPARE(area->verticalScrollBar()->pageStep(), area->viewport()->height());
}

void TestSetFlightPathProfileDialogWindow::wheelScrollsUpwardAndAlong()
{
    EditorFixture f;
    openNarrow(f);
    auto *across = bar(f, "horizontalScrollBar");
    auto *up = bar(f, "verticalScrollBar");
    up->setValue(up->minimum());
    across->setValue(across->minimum());
    turnWheel(f.profile, {0, -120});
    QCOMPARE(up->value(), up->minimum() + 3 * 20);
    QCOMPARE(across->value(), across->minimum());
    turnWheel(f.profile, {0, 120});
    QCOMPARE(up->value(), up->minimum());
    turnWheel(f.profile, {-120, 0});
    QCOMPARE(across->value(), across->minimum() + 3 * 20);
    QCOMPARE(up->value(), up->minimum());
}

void TestSetFlightPathProfileDialogWindow::wheelScrollsAlongWhereNothingIsAbove()
{
    EditorFixture f;
    f.open(); // without points: 800 long, 100 high
    auto *across = bar(f, "horizontalScrollBar");
    QCOMPARE(bar(f, "verticalScrollBar")->maximum(),
             bar(f, "verticalScrollBar")->minimum());
    const int before = across->value();
    turnWheel(f.profile, {0, -120});
    QCOMPARE(across->value(), before + 3 * 20);
}

void TestSetFlightPathProfileDialogWindow::wheelMovesNothingUnderADrag()
{
    EditorFixture f;
    f.openLow();
    f.pressProfile(60, 100);
    f.moveProfile(60, 102);
    f.paint();
    const int before = bar(f, "verticalScrollBar")->value();
    turnWheel(f.profile, {0, -120});
    QCOMPARE(bar(f, "verticalScrollBar")->value(), before);
    f.moveProfile(60, 110);
    QCOMPARE(f.points[1].z, 110);
    f.releaseProfile(60, 110);
    turnWheel(f.profile, {0, -120});
    QVERIFY(bar(f, "verticalScrollBar")->value() > before);
}

// Over the picture, and over a bar, from which the window gets what is left.
void TestSetFlightPathProfileDialogWindow::wheelRestsWhereABarEnds()
{
    EditorFixture f;
    openNarrow(f);
    auto *across = bar(f, "horizontalScrollBar");
    auto *up = bar(f, "verticalScrollBar");
    up->setValue(up->maximum() - 30);
    across->setValue(across->maximum());
    turnWheel(f.profile, {0, -120});
    turnWheel(f.profile, {0, -120});
    QCOMPARE(up->value(), up->maximum());
    turnWheel(f.profile, {-120, 0});
    QCOMPARE(across->value(), across->maximum());

    up->setValue(up->minimum());
    const QPoint overBar = across->geometry().center();
    turnWheel(f.profile, {0, -120}, overBar);
    QCOMPARE(up->value(), up->minimum());
}

// Until then no key does anything, Escape never.
void TestSetFlightPathProfileDialogWindow::keysScrollOnceTabHasLedToABar()
{
    EditorFixture f;
    openNarrow(f);
    f.profile->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.profile));
    auto *across = bar(f, "horizontalScrollBar");
    auto *up = bar(f, "verticalScrollBar");
    const int station = across->value();
    const int height = up->value();
    const auto press = [&f](Qt::Key key) {
        QTest::keyClick(f.profile->windowHandle(), key);
    };
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown})
        press(key);
    QCOMPARE(across->value(), station);
    QCOMPARE(up->value(), height);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    QCOMPARE(across->value(), station + 20);
    press(Qt::Key_Left);
    QCOMPARE(across->value(), station);
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    press(Qt::Key_PageDown);
    QCOMPARE(up->value(), qMin(height + 20 + up->height(), up->maximum()));
    QVERIFY(up->value() > height + 20);
    press(Qt::Key_Escape);
    QVERIFY(f.profile->isVisible());
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    QCOMPARE(across->value(), station);
}

void TestSetFlightPathProfileDialogWindow::darkPaletteLeavesALightGround()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(darkPalette());
    {
        EditorFixture f;
        f.openLevel();
        checkColours(f);
        QVERIFY(f.plan->palette().color(QPalette::Window).lightness() < 100);
    }
    QApplication::setPalette(before);
}

void TestSetFlightPathProfileDialogWindow::paletteMayChangeMeanwhile()
{
    const QPalette before = QApplication::palette();
    EditorFixture f;
    f.openLevel();
    const QColor light = f.profileColour(140, 30);
    QCOMPARE(light, before.color(QPalette::Window));
    QApplication::setPalette(darkPalette());
    checkColours(f);
    QApplication::setPalette(before);
    QCOMPARE(f.profileColour(140, 30), light);
    QPalette rosy(QColor(250, 240, 240));
    QApplication::setPalette(rosy);
    QCoreApplication::processEvents();
    QCOMPARE(f.profileColour(140, 30), QColor(250, 240, 240));
    QApplication::setPalette(before);
}

QTEST_MAIN(TestSetFlightPathProfileDialogWindow)
#include "test_setflightpathprofiledialog_window.moc"
