#include "app/runfixture.h"
#include "raster/imagefile.h"
#include "views/imagemdichild.h"

#include <QScrollArea>
#include <QScrollBar>

/// Sceneries in the workspace, and runs that the main window starts and stops.
class TestMainWindowRuns : public QObject, private RunFixture {
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void cleanup() { closeWindow(); }

    void newSceneryOpensInItsWindow()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->accept(); });
        action("action_New")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QCOMPARE(windows().size(), 1);
        MdiChild *const view = m_window->activeMdiChild();
        QVERIFY(view);
        QVERIFY(view->windowTitle().endsWith(".zph[*]"));
        QVERIFY(!view->isModified());
        // Also if the form is larger than the workspace.
        QVERIFY(windows()[0]->x() >= 0);
        QVERIFY(windows()[0]->y() >= 0);
        expectEnabled({"action_Save", "action_Close", "action_Preview", "action_Final"});
        expectDisabled({"action_Copy", "action_Paste", "action_ZoomIn", "action_ZoomOut",
                        "action_NormalSize", "action_FitToWindow", "action_Stop"});
    }

    void newSceneryIsNowhereSmallerThanItNeeds()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->accept(); });
        action("action_New")->trigger();
        const MdiChild *const view = m_window->activeMdiChild();
        QCOMPARE(view->size(), QSize(400, 300));
        const auto widgets = view->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const bool inForm = widget->inherits("QGroupBox") ||
                                widget->parentWidget()->inherits("QGroupBox");
            const QSize least =
                widget->minimumSizeHint().boundedTo(widget->maximumSize());
            if (inForm)
                QVERIFY2(widget->width() >= least.width() &&
                             widget->height() >= least.height(),
                         qPrintable(widget->objectName()));
        }
    }

    void openedSceneryShowsItsWholeForm()
    {
        QVERIFY(openScenery()); // in a workspace that is smaller
        const auto *area = m_window->activeMdiChild()->findChild<QScrollArea *>();
        QVERIFY(area->height() > m_window->height());
        QTRY_VERIFY(!area->verticalScrollBar()->isVisible());
        QTRY_VERIFY(!area->horizontalScrollBar()->isVisible());
    }

    void newSceneryFillsAMaximizedWorkspace()
    {
        QVERIFY(openScenery());
        windows()[0]->showMaximized();
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->accept(); });
        action("action_New")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QCOMPARE(windows().size(), 2);
        QVERIFY(windows()[1]->isMaximized());
        QCOMPARE(windows()[1]->size(), windows()[0]->parentWidget()->size());
        // Back from there it has the size of every new scenery.
        windows()[1]->showNormal();
        QTest::qWait(20);
        QVERIFY(windows()[1]->width() > 300);
    }

    void brokenSceneryLeavesNoWindow()
    {
        const QString path = m_dir->filePath("broken.zph");
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("[Param]\nBeobXA=5\nnonsense=1\n");
        file.close();
        ModalAnswers answers;
        answers.pressButton(
            "Error",
            QString("Cannot open file \"%1\":\nNo such key: nonsense=1.").arg(path),
            QMessageBox::Ok);
        m_window->open(path);
        QCOMPARE(answers.complaints().join("; "), QString());
        QVERIFY(windows().isEmpty());
    }

    void firstAndLastFrameAreCopied()
    {
        QVERIFY(openScenery());
        spin("doubleSpinBoxCameraFromX")->setValue(12.5);
        action("action_CopyFirstLast")->trigger();
        QCOMPARE(spin("doubleSpinBoxCameraToX")->value(), 12.5);
        spin("doubleSpinBoxCameraToRoll")->setValue(-7);
        action("action_CopyLastFirst")->trigger();
        QCOMPARE(spin("doubleSpinBoxCameraFromRoll")->value(), -7.0);
        QVERIFY(m_window->activeMdiChild()->isModified());
        discardOnClose();
    }

    void cancelKeepsTheWindowOfAModifiedScenery()
    {
        QVERIFY(openScenery());
        MdiChild *const view = m_window->activeMdiChild();
        spin("doubleSpinBoxCameraFromX")->setValue(1);
        {
            ModalAnswers answers;
            answers.pressButton("Close File", closeQuestion(view), QMessageBox::Cancel);
            QTest::keyClick(m_window->windowHandle(), Qt::Key_W, Qt::ControlModifier);
            QCOMPARE(answers.complaints().join("; "), QString());
        }
        QCOMPARE(windows().size(), 1);
        QVERIFY(view->isVisible());
        discardOnClose();
    }

    void runWritesFramesAndGivesTheEntriesBack()
    {
        QVERIFY(openScenery(3));
        bool looked = false;
        duringTheRun([&] {
            looked = true;
            expectDisabled({"action_Preview", "action_Final"});
            expectEnabled({"action_Stop", "action_ZoomIn", "action_ZoomOut",
                           "action_NormalSize", "action_FitToWindow"});
        });
        action("action_Final")->trigger();
        QVERIFY(looked);
        expectEnabled({"action_Preview", "action_Final", "action_ZoomIn"});
        expectDisabled({"action_Stop"});
        QCOMPARE(frames(), (QStringList{"f0.png", "f1.png", "f2.png"}));
        QCOMPARE(loadImageFile(m_dir->filePath("f0.png")).size(), QSize(64, 48));
    }

    void previewHasHalfTheSize()
    {
        QVERIFY(openScenery(1));
        action("action_Preview")->trigger();
        QCOMPARE(loadImageFile(m_dir->filePath("f0.png")).size(), QSize(32, 24));
    }

    void stopAsksAndKeepsEarlierFrames_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("stops");
        QTest::newRow("yes") << int(QMessageBox::Yes) << true;
        QTest::newRow("no") << int(QMessageBox::No) << false;
    }

    void stopAsksAndKeepsEarlierFrames()
    {
        QFETCH(int, answer);
        QFETCH(bool, stops);
        QVERIFY(openScenery(4));
        ModalAnswers answers;
        answers.pressButton("Stop Rendering", "Do you really want to cancel rendering?",
                            QMessageBox::StandardButton(answer));
        duringTheRun([&] { action("action_Stop")->trigger(); });
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QCOMPARE(frames().size() < 4, stops);
        expectEnabled({"action_Final"});
        expectDisabled({"action_Stop"});
    }

    void programStaysOpenDuringARun()
    {
        QVERIFY(openScenery(2));
        ModalAnswers answers; // none: no question is asked
        bool closed = true;
        bool viewClosed = true;
        duringTheRun([&] {
            closed = m_window->close();
            viewClosed = windows()[0]->close();
        });
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QVERIFY(!closed);
        QVERIFY(!viewClosed);
        QVERIFY(m_window->isVisible());
        QCOMPARE(windows().size(), 1);
        QVERIFY(windows()[0]->isVisible());
        QCOMPARE(frames().size(), 2);
        QVERIFY(m_window->close());
    }

    void failedRunSaysWhyAndGivesTheEntriesBack()
    {
        QVERIFY(openScenery(1, "nowhere.png"));
        ModalAnswers answers;
        answers.pressButton("Error", "Could not open texture file \"nowhere.png\"",
                            QMessageBox::Ok);
        action("action_Final")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        expectEnabled({"action_Final", "action_Preview"});
        expectDisabled({"action_Stop"});
    }

    void entriesFollowTheViewThatIsActiveDuringARun()
    {
        QVERIFY(openScenery(2));
        const QString other = m_dir->filePath("other.png");
        QVERIFY(QFile::copy(path("picture.png"), other));
        m_window->open(other);
        action("action_Next")->trigger();
        bool looked = false;
        duringTheRun([&] {
            looked = true;
            action("action_Next")->trigger();
            expectDisabled({"action_Stop", "action_Final"});
            action("action_Next")->trigger();
            expectEnabled({"action_Stop", "action_ZoomIn"});
            expectDisabled({"action_Final"});
        });
        action("action_Final")->trigger();
        QVERIFY(looked);
        expectEnabled({"action_Final"});
    }

    void zoomReachesThePictureOfTheRun()
    {
        QVERIFY(openScenery(1));
        action("action_Final")->trigger();
        QCOMPARE(m_window->activeMdiChild()->findChildren<ImageMdiChild *>().size(), 1);
        QApplication::setActiveWindow(m_window.get());
        action("action_ZoomIn")->trigger();
        QCOMPARE(m_window->statusBar()->currentMessage(), QString("125%"));
    }
};

QTEST_MAIN(TestMainWindowRuns)
#include "test_mainwindow_runs.moc"
