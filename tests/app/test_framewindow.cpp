#include "app/runfixture.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/imagefile.h"
#include "views/imagemdichild.h"

/// The window that shows the frames of a scenery's runs, and its keys.
class TestFrameWindow : public QObject, private RunFixture {
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void cleanup() { closeWindow(); }

    void frameWindowStopsItsRun()
    {
        QVERIFY(openScenery(4));
        ModalAnswers answers;
        answers.pressButton("Stop Rendering", "Do you really want to cancel rendering?",
                            QMessageBox::Yes);
        duringTheRun([&] { pressInPicture(Qt::Key_T); });
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QVERIFY(frames().size() < 4);
        pressInPicture(Qt::Key_T); // nothing runs, nothing is asked
        QCOMPARE(answers.complaints().join("; "), QString());
    }

    void frameWindowStartsRunsOfItsScenery()
    {
        QVERIFY(openScenery(1));
        action("action_Final")->trigger();
        const auto width = [&] {
            return loadImageFile(m_dir->filePath("f0.png")).width();
        };
        pressInPicture(Qt::Key_R);
        QCOMPARE(width(), 32);
        pressInPicture(Qt::Key_F);
        QCOMPARE(width(), 64);
        expectEnabled({"action_Final", "action_Preview"});
        expectDisabled({"action_Stop"});
    }

    void frameWindowStartsRunsOfASceneryThatIsNotActive()
    {
        QVERIFY(openScenery(1));
        action("action_Preview")->trigger();
        ImageMdiChild *const shown = picture();
        auto *const scenery = qobject_cast<SceneryMdiChild *>(m_window->activeMdiChild());
        QVERIFY(scenery);
        const QString other = m_dir->filePath("other.png");
        QFile::remove(other);
        QVERIFY(QFile::copy(path("picture.png"), other));
        m_window->open(other);
        bool refused = false;
        connect(&scenery->delegate(), &SceneryDelegate::frameStarted, m_window.get(),
                [&] { refused = !m_window->close(); });
        press(shown, Qt::Key_F);
        QVERIFY(refused);
        QCOMPARE(loadImageFile(m_dir->filePath("f0.png")).width(), 64);
        // The entries tell of the picture, which is active as before.
        QCOMPARE(m_window->activeMdiChild()->currentFile(),
                 QFileInfo(other).canonicalFilePath());
        expectDisabled({"action_Final", "action_Preview", "action_Stop"});
        expectEnabled({"action_ZoomIn", "action_Copy"});
    }

    void closeKeyClosesTheFrameWindowAlone()
    {
        QVERIFY(openScenery(2));
        duringTheRun([&] { pressInPicture(Qt::Key_W); });
        action("action_Final")->trigger();
        QCOMPARE(frames().size(), 2);
        QVERIFY(picture()->isVisible());
        pressInPicture(Qt::Key_W);
        QTRY_VERIFY(!picture());
        QCOMPARE(windows().size(), 1);
        QVERIFY(windows()[0]->isVisible());
        action("action_Final")->trigger(); // into a window made anew
        QVERIFY(picture());
    }

private:
    [[nodiscard]] ImageMdiChild *picture() const
    {
        return m_window->activeMdiChild()->findChild<ImageMdiChild *>();
    }
    void press(QWidget *window, Qt::Key key)
    {
        QApplication::setActiveWindow(window);
        QTest::keyClick(window->windowHandle(), key, Qt::ControlModifier);
    }
    void pressInPicture(Qt::Key key) { press(picture(), key); }
};

QTEST_MAIN(TestFrameWindow)
#include "test_framewindow.moc"
