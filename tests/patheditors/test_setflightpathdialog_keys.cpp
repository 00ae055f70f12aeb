#include "patheditors/editorfixture.h"

#include <QApplication>
#include <QHash>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTest>

/// "+" counts while its key is held, and not longer.
class TestSetFlightPathDialogKeys : public QObject {
    Q_OBJECT

private slots:
    void plusEndsWhateverItsKeyIsCalled_data();
    void plusEndsWhateverItsKeyIsCalled();
    void plusStaysWhileOtherKeysComeUp_data();
    void plusStaysWhileOtherKeysComeUp();
    void anotherWindowEndsPlus();
    void contextMenuEndsPlus();
    void anyMenuEndsPlus();
    void focusInsideTheWindowKeepsPlus();
    void repeatedKeyBringsPlusBack();
};

namespace {

// Presses and releases by name: "+Shift" is a press.
using Strokes = QStringList;

// The keys of "+" stand in one place of the keyboard, whatever they type.
quint32 placeOf(int key, bool placesAreTold)
{
    switch (key) {
    case Qt::Key_Shift:
        return placesAreTold ? 50 : 0;
    case Qt::Key_A:
        return placesAreTold ? 38 : 0;
    default:
        return placesAreTold ? 21 : 0;
    }
}

void type(QWidget *window, const Strokes &strokes, bool placesAreTold)
{
    static const QHash<QString, int> keys{
        {"Shift", Qt::Key_Shift},      {"plus", Qt::Key_Plus},
        {"equal", Qt::Key_Equal},      {"asterisk", Qt::Key_Asterisk},
        {"tilde", Qt::Key_AsciiTilde}, {"A", Qt::Key_A}};
    for (const QString &stroke : strokes) {
        const int key = keys.value(stroke.mid(1));
        const bool isPress = stroke.startsWith('+');
        QKeyEvent event(isPress ? QEvent::KeyPress : QEvent::KeyRelease, key, {},
                        placeOf(key, placesAreTold), 0, 0);
        QCoreApplication::sendEvent(window, &event);
    }
}

void bothWays(const char *name, const Strokes &strokes)
{
    QTest::addRow("%s", name) << strokes << true;
    QTest::addRow("%s, places unknown", name) << strokes << false;
}

void openWithFocusOnOK(EditorFixture &f)
{
    f.openSquare();
    f.plan->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.plan.get()));
    f.plan->findChild<QPushButton *>("pushButtonOK")->setFocus();
}

// A click on a point inserts with "+" and deletes without.
bool isPlusHeld(EditorFixture &f)
{
    const qsizetype before = f.points.size();
    f.clickPlan(f.points.at(0).x, f.points.at(0).y);
    return f.points.size() > before;
}

} // namespace

void TestSetFlightPathDialogKeys::plusEndsWhateverItsKeyIsCalled_data()
{
    QTest::addColumn<Strokes>("strokes");
    QTest::addColumn<bool>("placesAreTold");
    bothWays("alone", {"+plus", "-plus"});
    bothWays("with Shift, key first", {"+Shift", "+plus", "-plus", "-Shift"});
    bothWays("with Shift, Shift first", {"+Shift", "+plus", "-Shift", "-equal"});
    bothWays("Shift pressed meanwhile", {"+plus", "+Shift", "-asterisk", "-Shift"});
    bothWays("Shift pressed and gone meanwhile", {"+plus", "+Shift", "-Shift", "-plus"});
    bothWays("another level of the keyboard", {"+plus", "-tilde"});
    bothWays("a letter between", {"+Shift", "+plus", "+A", "-Shift", "-A", "-equal"});
    bothWays("twice", {"+Shift", "+plus", "-Shift", "-equal", "+Shift", "+plus", "-Shift",
                       "-equal"});
}

void TestSetFlightPathDialogKeys::plusEndsWhateverItsKeyIsCalled()
{
    QFETCH(Strokes, strokes);
    QFETCH(bool, placesAreTold);
    EditorFixture f;
    f.openSquare();
    f.movePlan(60, 60);
    f.movePlan(20, 20);
    type(f.plan.get(), strokes, placesAreTold);
    QCOMPARE(f.plan->cursor().shape(), Qt::CrossCursor);
    QVERIFY(!isPlusHeld(f));
}

void TestSetFlightPathDialogKeys::plusStaysWhileOtherKeysComeUp_data()
{
    QTest::addColumn<Strokes>("strokes");
    QTest::addColumn<bool>("placesAreTold");
    bothWays("Shift", {"+Shift", "+plus", "-Shift"});
    bothWays("Shift pressed elsewhere", {"+plus", "-Shift"});
    bothWays("a letter", {"+A", "+plus", "-A"});
    bothWays("a letter meanwhile", {"+plus", "+A", "-A"});
}

void TestSetFlightPathDialogKeys::plusStaysWhileOtherKeysComeUp()
{
    QFETCH(Strokes, strokes);
    QFETCH(bool, placesAreTold);
    EditorFixture f;
    f.openSquare();
    f.movePlan(60, 60);
    f.movePlan(20, 20);
    type(f.plan.get(), strokes, placesAreTold);
    QCOMPARE(f.plan->cursor().shape(), Qt::BitmapCursor);
    QVERIFY(isPlusHeld(f));
}

void TestSetFlightPathDialogKeys::anotherWindowEndsPlus()
{
    EditorFixture f;
    f.openSquare();
    f.plan->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.plan.get()));
    f.movePlan(60, 60);
    f.movePlan(20, 20);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    f.profile->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.profile));
    QTest::keyRelease(f.profile, Qt::Key_Plus);
    QCOMPARE(f.plan->cursor().shape(), Qt::CrossCursor);
    QVERIFY(!isPlusHeld(f));
}

void TestSetFlightPathDialogKeys::contextMenuEndsPlus()
{
    EditorFixture f;
    f.openSquare();
    f.movePlan(20, 20);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    f.choosePlan(150, 20, "Eyes Front");
    QVERIFY(!isPlusHeld(f));
}

// As that of a scroll bar.
void TestSetFlightPathDialogKeys::anyMenuEndsPlus()
{
    EditorFixture f;
    openWithFocusOnOK(f);
    f.movePlan(20, 20);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QMenu menu;
    menu.addAction("Scroll here");
    menu.popup(f.plan->mapToGlobal(QPoint(200, 200)));
    menu.close();
    QVERIFY(!isPlusHeld(f));
}

void TestSetFlightPathDialogKeys::focusInsideTheWindowKeepsPlus()
{
    EditorFixture f;
    openWithFocusOnOK(f);
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    f.plan->findChild<QPushButton *>("pushButtonCancel")->setFocus();
    QVERIFY(isPlusHeld(f));
}

void TestSetFlightPathDialogKeys::repeatedKeyBringsPlusBack()
{
    EditorFixture f;
    f.openSquare();
    QTest::keyPress(f.plan.get(), Qt::Key_Plus);
    QEvent leave(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(f.plan.get(), &leave);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Plus, {}, "+", true);
    QCoreApplication::sendEvent(f.plan.get(), &repeated);
    QVERIFY(isPlusHeld(f));
}

QTEST_MAIN(TestSetFlightPathDialogKeys)
#include "test_setflightpathdialog_keys.moc"
