#include "views/statushints.h"

#include "views/noticelabel.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <thread>

namespace {

const QString LongName = "/a/" + QString("folder/").repeated(60) + "file.png";

} // namespace

class TestStatusHints : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_edit = new QLineEdit;
        m_window->setCentralWidget(m_edit);
        m_hints = new StatusHints(m_window->statusBar());
        m_window->resize(500, 200);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void nothingToTellTakesNoPlace()
    {
        QVERIFY(!m_hints->isVisible());
        m_hints->tell({"", NoticeStay::AWhile});
        QVERIFY(!m_hints->isVisible());
    }

    void hintWithoutAButtonCanBeClosed()
    {
        m_hints->tell({"It is so."});
        QVERIFY(label()->isVisible());
        QCOMPARE(label()->notice(), QString("It is so."));
        QVERIFY(!button()->isVisible());
        QTest::mouseClick(closer(), Qt::LeftButton);
        QVERIFY(!m_hints->isVisible());
    }

    void buttonActs()
    {
        int acted = 0;
        m_hints->tell({.text = "A report.",
                       .button = "&Report...",
                       .buttonHelp = "Opens it.",
                       .act = [&acted] { ++acted; }});
        QVERIFY(button()->isVisible());
        QCOMPARE(button()->text(), QString("&Report..."));
        QCOMPARE(button()->toolTip(), QString("Opens it."));
        QTest::mouseClick(button(), Qt::LeftButton);
        QCOMPARE(acted, 1);
    }

    // What the button does may take its own hint away.
    void buttonMayEndItsHint()
    {
        m_hints->tell({.text = "one", .button = "Go", .act = [this] {
                           m_hints->dismiss();
                           m_hints->tell({"two"});
                       }});
        QTest::mouseClick(button(), Qt::LeftButton);
        QCOMPARE(label()->notice(), QString("two"));
        QVERIFY(!button()->isVisible());
    }

    void newestIsShownAndTheOneBeforeComesBack()
    {
        m_hints->tell({.text = "first", .button = "Do"});
        m_hints->tell({"second"});
        QCOMPARE(label()->notice(), QString("second"));
        closer()->click();
        QCOMPARE(label()->notice(), QString("first"));
        QVERIFY(button()->isVisible());
        m_hints->tell({"third"});
        m_hints->dismiss();
        QVERIFY(!m_hints->isVisible());
        closer()->click();
        QVERIFY(!m_hints->isVisible());
    }

    void aSubjectIsToldOnce()
    {
        m_hints->tell({.text = "16 bits", .subject = "elevation"});
        m_hints->tell({"other"});
        m_hints->tell({.text = "32 bits", .subject = "elevation"});
        QCOMPARE(label()->notice(), QString("32 bits"));
        m_hints->withdraw("texture");
        QCOMPARE(label()->notice(), QString("32 bits"));
        m_hints->withdraw("elevation");
        QCOMPARE(label()->notice(), QString("other"));
        closer()->click();
        QVERIFY(!m_hints->isVisible());
    }

    void endsAfterAWhile()
    {
        m_hints->tell({"stays"});
        m_hints->tell({"goes", NoticeStay::AWhile});
        auto *const timer = label()->findChild<QTimer *>();
        timer->setInterval(1);
        QTRY_COMPARE(label()->notice(), QString("stays"));
        QTest::qWait(20);
        QCOMPARE(label()->notice(), QString("stays"));
    }

    // Buttons and text keep to their part of the bar; the tool tip has all of the text.
    void pathsAreWholeInTheToolTip()
    {
        m_window->statusBar()->showMessage("left");
        m_hints->tell({.text = LongName, .button = "Open Terrain..."});
        for (const int width : {500, 900}) {
            m_window->resize(width, 200);
            QTRY_COMPARE(m_window->statusBar()->width(), width);
            QTRY_VERIFY(m_hints->width() <= width * 3 / 5 + 20);
            QCOMPARE(label()->toolTip(), LongName);
            QVERIFY(label()->text().size() < LongName.size());
        }
        QCOMPARE(m_window->statusBar()->currentMessage(), QString("left"));
    }

    void barIsAsHighAsEver()
    {
        const int height = m_window->statusBar()->height();
        m_hints->tell({.text = "x", .button = "Do"});
        QTest::qWait(20);
        QCOMPARE(m_window->statusBar()->height(), height);
    }

    void keyboardLeadsThereAndBack()
    {
        m_edit->setFocus();
        int acted = 0;
        m_hints->takeFocus(); // nothing there
        QVERIFY(m_edit->hasFocus());
        m_hints->tell({.text = "x", .button = "Do", .act = [&acted] { ++acted; }});
        m_hints->takeFocus();
        QVERIFY(button()->hasFocus());
        QTest::keyClick(button(), Qt::Key_Space);
        QCOMPARE(acted, 1);
        QTest::keyClick(button(), Qt::Key_Tab);
        QVERIFY(closer()->hasFocus());
        QTest::keyClick(closer(), Qt::Key_Escape);
        QVERIFY(m_edit->hasFocus());
        m_hints->takeFocus();
        m_hints->dismiss();
        QVERIFY(m_edit->hasFocus());
    }

    void threadsMayTell()
    {
        std::thread([this] {
            emit m_hints->arrived("from afar", NoticeStay::AWhile);
        }).join();
        QTRY_COMPARE(label()->notice(), QString("from afar"));
    }

private:
    [[nodiscard]] NoticeLabel *label() const
    {
        return m_hints->findChild<NoticeLabel *>("labelNotice");
    }
    [[nodiscard]] QPushButton *button() const
    {
        return m_hints->findChild<QPushButton *>("pushButtonHint");
    }
    [[nodiscard]] QToolButton *closer() const
    {
        return m_hints->findChild<QToolButton *>("toolButtonCloseHint");
    }

    std::unique_ptr<QMainWindow> m_window;
    QLineEdit *m_edit = nullptr;
    StatusHints *m_hints = nullptr;
};

QTEST_MAIN(TestStatusHints)
#include "test_statushints.moc"
