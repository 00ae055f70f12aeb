#include "app/application.h"

#include "support/modalanswer.h"

#include <QMenu>
#include <QPushButton>
#include <QTest>

#include <sys/resource.h>

#include <new>
#include <vector>

/// Memory that runs out in the handling of an event.
class TestApplication : public QObject {
    Q_OBJECT

private slots:
    void aClickThatNeedsTooMuchIsTold();
    void aCommandOfAMenuWorksAgainAfterwards();
    void oneBoxTellsOfSeveralFailures();
    void paintingThatFailsIsNotToldForEver();
    void realShortageLeavesTheProgramRunning();

private:
    static const QString Told;
};

const QString TestApplication::Told =
    "There is not enough memory for this. It was given up, and the program goes on.\n"
    "Save your work, and close windows that you do not need.";

void TestApplication::aClickThatNeedsTooMuchIsTold()
{
    QPushButton button;
    int clicks = 0;
    connect(&button, &QPushButton::clicked, this, [&clicks] {
        if (++clicks != 2)
            throw std::bad_alloc();
    });
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    ModalAnswers answers;
    answers.pressButton("Error", Told, QMessageBox::Ok);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(QApplication::activeModalWidget()); // the box does not hold up the event
    QTRY_COMPARE(answers.complaints(), QStringList());
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicks, 2);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!button.isDown());
}

void TestApplication::aCommandOfAMenuWorksAgainAfterwards()
{
    QMenu menu;
    int calls = 0;
    menu.addAction("x", this, [&calls] {
        if (++calls == 1)
            throw std::bad_alloc();
    });
    for (int i = 1; i <= 3; ++i) {
        ModalAnswers answers;
        if (i == 1)
            answers.pressButton("Error", Told, QMessageBox::Ok);
        menu.popup({10, 10});
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        const QPoint place = menu.actionGeometry(menu.actions().first()).center();
        QTest::mouseClick(&menu, Qt::LeftButton, {}, place);
        QTRY_COMPARE(answers.complaints(), QStringList());
        QTRY_VERIFY(!menu.isVisible());
        QCOMPARE(calls, i);
    }
}

void TestApplication::oneBoxTellsOfSeveralFailures()
{
    ModalAnswers answers;
    answers.pressButton("Error", Told, QMessageBox::Ok);
    for (int i = 0; i < 5; ++i)
        QMetaObject::invokeMethod(
            this, [] { throw std::bad_alloc(); }, Qt::QueuedConnection);
    QTRY_COMPARE(answers.complaints(), QStringList());
    QTest::qWait(50);
    QCOMPARE(answers.complaints(), QStringList());
}

namespace {

class Unpaintable : public QWidget {
public:
    int tried = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++tried;
        throw std::bad_alloc();
    }
};

} // namespace

void TestApplication::paintingThatFailsIsNotToldForEver()
{
    ModalAnswers answers;
    answers.pressButton("Error", Told, QMessageBox::Ok);
    QMetaObject::invokeMethod(
        this, [] { throw std::bad_alloc(); }, Qt::QueuedConnection);
    QTRY_COMPARE(answers.complaints(), QStringList());
    QTRY_VERIFY(!QApplication::activeModalWidget());
    Unpaintable widget; // of this the user has just read
    widget.show();
    QTRY_VERIFY(widget.tried > 0);
    const int before = widget.tried;
    widget.update();
    QTRY_VERIFY(widget.tried > before);
    QCOMPARE(answers.complaints(), QStringList());
}

void TestApplication::realShortageLeavesTheProgramRunning()
{
#ifdef ZEPHRANT_SANITIZED
    QSKIP("the sanitizers need the address space for themselves");
#endif
    QPushButton button;
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_AS, &before), 0);
    std::vector<std::vector<char>> hoard;
    bool ended = false;
    connect(&button, &QPushButton::clicked, this, [&] {
        rlimit tight = before;
        tight.rlim_cur = rlim_t(1) << 30;
        setrlimit(RLIMIT_AS, &tight);
        const auto lift = qScopeGuard([&] {
            hoard.clear();
            setrlimit(RLIMIT_AS, &before);
            ended = true;
        });
        for (;;)
            hoard.emplace_back(std::size_t(64) << 20);
    });
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    ModalAnswers answers;
    answers.pressButton("Error", Told, QMessageBox::Ok);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTRY_COMPARE(answers.complaints(), QStringList());
    QVERIFY(ended);
}

int main(int argc, char **argv)
{
    Application application(argc, argv);
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_application.moc"
