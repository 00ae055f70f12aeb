#include "views/noticelabel.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QTest>
#include <QThread>

class TestNoticeLabel : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_bar = m_window->statusBar();
        m_label = new NoticeLabel(m_bar);
        m_bar->addPermanentWidget(m_label);
        m_window->resize(500, 200);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void nothingToTellTakesNoPlace() { QVERIFY(!m_label->isVisible()); }

    void shortNoticeIsShownWhole()
    {
        m_label->tell("No room.", NoticeStay::AWhile);
        QTRY_COMPARE(m_label->text(), QString("No room."));
        QVERIFY(m_label->isVisible());
        QCOMPARE(m_label->toolTip(), QString("No room."));
        QCOMPARE(m_label->accessibleDescription(), QString("No room."));
    }

    // Whatever the width of the window.
    void longNoticeLeavesRoomForTheMessage()
    {
        const QString text = QString("a long sentence, ").repeated(30);
        m_bar->showMessage("File loaded");
        m_label->tell(text, NoticeStay::AWhile);
        for (const int width : {500, 900, 300}) {
            m_window->resize(width, 200);
            QTRY_VERIFY(m_label->width() <= m_bar->width() * 3 / 5);
            QTRY_VERIFY(m_label->width() >= m_bar->width() / 2);
            QVERIFY(m_label->text().endsWith(QChar(0x2026)));
            QVERIFY(m_label->fontMetrics().horizontalAdvance(m_label->text()) <=
                    m_label->width());
            QCOMPARE(m_label->notice(), text);
            QCOMPARE(m_label->toolTip(), text);
        }
        QCOMPARE(m_bar->currentMessage(), QString("File loaded"));
        QVERIFY(m_label->geometry().right() > m_bar->width() / 2);
    }

    void namesOfFilesAreNoMarkup()
    {
        m_label->tell("<b>x</b>", NoticeStay::AWhile);
        QTRY_COMPARE(m_label->text(), QString("<b>x</b>"));
        QCOMPARE(m_label->toolTip(), QString("&lt;b&gt;x&lt;/b&gt;"));
    }

    void goesWhenOtherWorkBegins()
    {
        m_label->tell("No room.", NoticeStay::UntilNextWork);
        m_label->dismiss();
        QVERIFY(!m_label->isVisible());
        QCOMPARE(m_label->notice(), QString());
        QCOMPARE(m_label->toolTip(), QString());
    }

    void goesAfterAWhileUnlessItIsToStay()
    {
        auto *const timer = m_label->findChild<QTimer *>();
        QVERIFY(timer);
        QCOMPARE(timer->interval(), 60000);
        m_label->tell("It stays.", NoticeStay::UntilNextWork);
        QVERIFY(!timer->isActive());
        m_label->tell("It goes.", NoticeStay::AWhile);
        QVERIFY(timer->isActive());
        timer->setInterval(1);
        QTRY_VERIFY(!m_label->isVisible());
    }

    void canBeReadByThoseWhoDoNotSee()
    {
        QCOMPARE(m_label->objectName(), QString("labelNotice"));
        QVERIFY(!m_label->accessibleName().isEmpty());
        QVERIFY(!m_label->whatsThis().isEmpty());
    }

private:
    std::unique_ptr<QMainWindow> m_window;
    QStatusBar *m_bar = nullptr;
    NoticeLabel *m_label = nullptr;
};

QTEST_MAIN(TestNoticeLabel)
#include "test_noticelabel.moc"
