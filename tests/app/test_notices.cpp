// What the program tells on the right side of its status bar.

#include "app/windowfixture.h"
#include "base/notices.h"
#include "support/modalanswer.h"
#include "views/imagemdichild.h"

#include <QDir>
#include <QRadioButton>
#include <QStatusBar>
#include <QTimer>

#include <thread>

namespace {

constexpr char Budget[] = "ZEPHRANT_MEMORY_BUDGET";

} // namespace

class TestNotices : public QObject, private WindowFixture {
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void cleanup()
    {
        qunsetenv(Budget);
        closeWindow();
    }

    void startTellsNothing()
    {
        QVERIFY(noticeLabel());
        QVERIFY(!noticeLabel()->isVisible());
        QCOMPARE(m_window->statusBar()->currentMessage(), QString());
    }

    // No box, and the run goes on.
    void frameThatCannotBeWrittenIsTold()
    {
        openScenery("none/f%d");
        m_window->showMessage("left", 0);
        ModalAnswers answers;
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(
            noticeLabel()->notice(),
            QString("3 files could not be saved. Could not save file \"%1\": No such "
                    "file or directory.")
                .arg(m_dir->filePath("none/f2.png")));
        QVERIFY(noticeLabel()->isVisible());
        QCOMPARE(m_window->statusBar()->currentMessage(), QString("100%"));
    }

    void oneFrameIsToldByItsName()
    {
        openScenery("f%d");
        QVERIFY(QDir(m_dir->path()).mkdir("f1.png")); // a folder is in its place
        action("action_Final")->trigger();
        QVERIFY2(
            noticeLabel()->notice().startsWith(
                QString("Could not save file \"%1\": ").arg(m_dir->filePath("f1.png"))),
            qPrintable(noticeLabel()->notice()));
        QVERIFY(QFile::exists(m_dir->filePath("f0.png")));
        QVERIFY(QFile::exists(m_dir->filePath("f2.png")));
    }

    void nextWorkTakesTheNoticeAway_data()
    {
        QTest::addColumn<QString>("work");
        for (const char *name : {"action_Final", "action_Preview", "action_Save",
                                 "action_Settings", "action_New"})
            QTest::newRow(name) << QString(name);
    }
    void nextWorkTakesTheNoticeAway()
    {
        QFETCH(QString, work);
        openScenery("f%d");
        tellNotice("something");
        QVERIFY(noticeLabel()->isVisible());
        ModalAnswers answers;
        if (work == "action_Settings" || work == "action_New")
            answers.withDialog([](QDialog *dialog) { dialog->reject(); });
        action(work)->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!noticeLabel()->isVisible());
    }

    void pictureBeyondTheBudgetIsTold()
    {
        const QString name = m_dir->filePath("large.png");
        QImage image(500, 400, QImage::Format_RGB32);
        image.fill(Qt::green);
        QVERIFY(saveImageFile(image, name));
        qputenv(Budget, "500000");
        m_window->showMessage("left", 0);
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(name),
                            QMessageBox::Ok);
        m_window->open(name);
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(
            noticeLabel()->notice(),
            QString("\"large.png\" (500 x 400 pixels) would take 800.0 kB of memory; "
                    "the budget is 500.0 kB."));
        QCOMPARE(m_window->statusBar()->currentMessage(), QString("left"));
    }

    void newPictureBeyondTheBudgetIsTold()
    {
        qputenv(Budget, "2000000");
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) {
            dialog->findChild<QRadioButton *>("radioButtonImage")->click();
            dialog->accept();
        });
        answers.pressButton("Error", "Cannot create image.", QMessageBox::Ok);
        action("action_New")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(noticeLabel()->notice(),
                 QString("A picture of 720 x 576 pixels would take 2.9 MB of memory; the "
                         "budget is 2.0 MB."));
    }

    // The target, the halved copy that is written, and what is shown.
    void frameBeyondTheBudgetIsTold()
    {
        openScenery("f%d", "GenauRechnen=2\nAusBreite=1000\nAusHoehe=800\n");
        qputenv(Budget, "17000000");
        ModalAnswers answers;
        answers.pressButton("Error", "Could not create an image of 2000 x 1600 pixels",
                            QMessageBox::Ok);
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(
            noticeLabel()->notice(),
            QString("A frame of 2000 x 1600 pixels with its copies would take 28.8 MB "
                    "of memory; the budget is 17.0 MB."));
        QVERIFY(!QFile::exists(m_dir->filePath("f0.png")));
    }

    void threadsMayTell()
    {
        std::thread([] { tellNotice("from afar"); }).join();
        QTRY_COMPARE(noticeLabel()->notice(), QString("from afar"));
    }

    void windowThatHasGoneIsToldNothing()
    {
        m_window.reset();
        tellNotice("nobody hears it");
    }

private:
    // Three frames of a small scenery.
    void openScenery(const QString &frames, const QString &more = {})
    {
        const QString name = smallScenery(
            "TDateiname=picture.png\nBildanzahl=3\nEndbildNr=2\nAusDateiname=" +
            path(frames) + '\n' + more);
        QVERIFY(!name.isEmpty());
        m_window->open(name);
        QVERIFY(m_window->activeMdiChild());
    }
};

QTEST_MAIN(TestNotices)
#include "test_notices.moc"
