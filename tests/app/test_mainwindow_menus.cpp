#include "app/windowfixture.h"
#include "importdialogs/importdialogs.h"
#include "support/modalanswer.h"
#include "support/settle.h"
#include "tooldialogs/tooldialogs.h"
#include "views/imagemdichild.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QSignalSpy>
#include <QStatusBar>
#include <QWhatsThis>

/// The menus: real keys, the Window menu, the states of the entries.
class TestMainWindowMenus : public QObject, private WindowFixture {
    Q_OBJECT

private slots:
    void init()
    {
        QApplication::clipboard()->clear();
        openWindow();
    }
    void cleanup() { closeWindow(); }

    void closeKeyClosesOneWindow()
    {
        openImages(2);
        press(Qt::Key_W, Qt::ControlModifier);
        QTRY_COMPARE(windows().size(), 1);
    }

    void closeKeyWorksInAMaximizedWindow()
    {
        openImages(2);
        area()->activeSubWindow()->showMaximized();
        settle();
        press(Qt::Key_W, Qt::ControlModifier);
        QTRY_COMPARE(windows().size(), 1);
    }

    void closeAllKeyClosesEveryWindow()
    {
        openImages(3);
        press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(windows().size(), 0);
    }

    void nextAndPreviousKeysWalkThroughTheWindows()
    {
        openImages(3);
        const auto all = windows();
        QCOMPARE(area()->activeSubWindow(), all[2]);
        press(Qt::Key_F6, Qt::ControlModifier);
        QCOMPARE(area()->activeSubWindow(), all[0]);
        press(Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(area()->activeSubWindow(), all[2]);
    }

    void zoomKeysZoomTheActiveViewOnly()
    {
        openImages(2);
        press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(message(), QString("125%"));
        press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(message(), QString("156%"));
        press(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(message(), QString("125%"));
        press(Qt::Key_F6, Qt::ControlModifier);
        press(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(message(), QString("80%"));
        press(Qt::Key_1, Qt::ControlModifier);
        press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(message(), QString("125%"));
    }

    void everyShortcutReachesItsEntryWithARealKey_data()
    {
        QTest::addColumn<QString>("action");
        QTest::newRow("new") << "action_New";
        QTest::newRow("open") << "action_Open";
        QTest::newRow("save") << "action_Save";
        QTest::newRow("save as") << "action_SaveAs";
        QTest::newRow("copy") << "action_Copy";
        QTest::newRow("paste") << "action_Paste";
        QTest::newRow("zoom in") << "action_ZoomIn";
        QTest::newRow("zoom out") << "action_ZoomOut";
        QTest::newRow("normal size") << "action_NormalSize";
        QTest::newRow("preview") << "action_Preview";
        QTest::newRow("final") << "action_Final";
        QTest::newRow("stop") << "action_Stop";
        QTest::newRow("close") << "action_Close";
        QTest::newRow("close all") << "action_CloseAll";
        QTest::newRow("next") << "action_Next";
        QTest::newRow("previous") << "action_Previous";
        QTest::newRow("exit") << "action_Exit";
    }

    void everyShortcutReachesItsEntryWithARealKey()
    {
        QFETCH(QString, action);
        openImages(2);
        QAction *const entry = this->action(action);
        entry->disconnect(); // only that the key arrives is looked at
        entry->setEnabled(true);
        const QSignalSpy triggered(entry, &QAction::triggered);
        const QKeyCombination key = entry->shortcut()[0];
        press(key.key(), key.keyboardModifiers());
        QCOMPARE(triggered.count(), 1);
    }

    void windowMenuListsTheWindows()
    {
        openImages(10);
        QMenu *const menu = m_window->findChild<QMenu *>("menu_Window");
        emit menu->aboutToShow();
        QStringList texts;
        QList<QAction *> checked;
        for (QAction *entry : menu->actions()) {
            texts << entry->text();
            if (entry->isChecked())
                checked << entry;
        }
        QCOMPARE(texts.size(), 9 + 10);
        QCOMPARE(texts[9], QString("&1 p0.png"));
        QCOMPARE(texts[17], QString("&9 p8.png"));
        QCOMPARE(texts[18], QString("10 p9.png"));
        QCOMPARE(checked, QList<QAction *>{menu->actions().at(18)});

        menu->actions().at(11)->trigger();
        QCOMPARE(area()->activeSubWindow(), windows()[2]);
    }

    void recentEntriesAppearAndStay()
    {
        for (const char *name : {"1", "2", "3", "4"})
            QVERIFY(!action(QString("action_OpenMRU") + name)->isVisible());
        openImages(1);
        QCOMPARE(action("action_OpenMRU1")->text(), m_dir->filePath("p0.png"));
        QVERIFY(action("action_OpenMRU1")->isVisible());
        QVERIFY(!action("action_OpenMRU2")->isVisible());
        AppSettings().clear();
        openImages(2);
        QVERIFY(action("action_OpenMRU1")->isVisible());
    }

    void ampersandOfAFileNameShowsAsItself()
    {
        const QString path = m_dir->filePath("rock & roll & sea.png");
        QVERIFY(QImage(8, 8, QImage::Format_RGB32).save(path));
        m_window->open(path);
        QMenu *const menu = m_window->findChild<QMenu *>("menu_Window");
        emit menu->aboutToShow();
        // Two ampersands stand for one that is shown.
        QCOMPARE(menu->actions().last()->text(), QString("&1 rock && roll && sea.png"));
        QMenu *const files = m_window->findChild<QMenu *>("menu_File");
        const QAction *const recent = action("action_OpenMRU1");
        QString shown = path;
        shown.replace("&", "&&");
        files->popup({10, 10});
        QCOMPARE(recent->text(), shown);
        files->close();
        QCOMPARE(recent->text(), path);
        action("action_Close")->trigger();
        QTRY_COMPARE(windows().size(), 0);
        action("action_OpenMRU1")->trigger();
        QCOMPARE(windows().size(), 1);
    }

    void windowMenuEntryOfAClosedWindowDoesNothing()
    {
        openImages(2);
        QMenu *const menu = m_window->findChild<QMenu *>("menu_Window");
        emit menu->aboutToShow();
        QMdiSubWindow *const first = windows()[0];
        first->close();
        QTRY_COMPARE(windows().size(), 1);
        menu->actions().at(9)->trigger();
        QCOMPARE(area()->activeSubWindow(), windows()[0]);
        m_window->setActiveSubWindow(nullptr);
        m_window->setActiveSubWindow(m_window.get());
    }

    void helpIsAskedForByAClick()
    {
        action("action_WhatsThis")->trigger();
        QVERIFY(QWhatsThis::inWhatsThisMode());
        QWhatsThis::leaveWhatsThisMode();
        openImages(1);
        const Qt::WindowFlags flags = windows()[0]->windowFlags();
        QVERIFY(flags.testFlag(Qt::WindowContextHelpButtonHint));
        QVERIFY(flags.testFlag(Qt::WindowMaximizeButtonHint));
        QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    }

    void ruleAboveTheWindowsShowsOnlyWithWindows()
    {
        QMenu *const menu = m_window->findChild<QMenu *>("menu_Window");
        QVERIFY(!menu->actions().at(8)->isVisible());
        openImages(1);
        emit menu->aboutToShow();
        QVERIFY(menu->actions().at(8)->isVisible());
    }

    void entriesFollowAnImageView()
    {
        for (const char *name : {"action_Copy", "action_Paste"})
            QVERIFY2(!action(name)->isEnabled(), name);
        for (const char *name : {"action_Save", "action_ZoomIn", "action_Final",
                                 "action_Stop", "action_CopyFirstLast"})
            QVERIFY2(action(name)->isEnabled(), name);
        openImages(1);
        for (const char *name :
             {"action_Save", "action_SaveAs", "action_Close", "action_CloseAll",
              "action_Tile", "action_Cascade", "action_Next", "action_Previous",
              "action_Copy", "action_ZoomIn", "action_ZoomOut", "action_NormalSize",
              "action_FitToWindow", "action_CopyFirstLast", "action_Settings"})
            QVERIFY2(action(name)->isEnabled(), name);
        for (const char *name :
             {"action_Paste", "action_Preview", "action_Final", "action_Stop"})
            QVERIFY2(!action(name)->isEnabled(), name);
        action("action_Copy")->trigger();
        QVERIFY(action("action_Paste")->isEnabled());
        action("action_Close")->trigger();
        QTRY_COMPARE(windows().size(), 0);
        QTRY_VERIFY(!action("action_Copy")->isEnabled());
        for (const char *name :
             {"action_Save", "action_Close", "action_Tile", "action_ZoomIn",
              "action_FitToWindow", "action_Paste", "action_Final", "action_Stop"})
            QVERIFY2(!action(name)->isEnabled(), name);
        QVERIFY(action("action_CopyFirstLast")->isEnabled());
    }

    void copyStaysForADocumentThatIsNotFromAFile()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>("radioButtonImage")->click();
            dialog->accept();
        });
        action("action_New")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(action("action_Copy")->isEnabled());
        action("action_Close")->trigger();
        QTRY_COMPARE(windows().size(), 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(action("action_Copy")->isEnabled());
        QVERIFY(!action("action_Save")->isEnabled());
    }

    void closingOneOfTwoLeavesCopyEnabled()
    {
        openImages(2);
        action("action_Close")->trigger();
        QTRY_COMPARE(windows().size(), 1);
        settle();
        QVERIFY(action("action_Copy")->isEnabled());
        QCOMPARE(message(), QString());
    }

    void fitMarkFollowsTheActiveView()
    {
        openImages(2);
        QAction *const fit = action("action_FitToWindow");
        fit->trigger();
        QVERIFY(fit->isChecked());
        action("action_Next")->trigger();
        QVERIFY(!fit->isChecked());
        action("action_Next")->trigger();
        QVERIFY(fit->isChecked());
    }

    void layoutDirectionSwitchesToAndFro()
    {
        action("action_SwitchLayoutDirection")->trigger();
        QCOMPARE(QApplication::layoutDirection(), Qt::RightToLeft);
        action("action_SwitchLayoutDirection")->trigger();
        QCOMPARE(QApplication::layoutDirection(), Qt::LeftToRight);
    }

    void dialogEntriesRunTheirDialogs_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("dialogClass");
        QTest::newRow("settings") << "action_Settings"
                                  << "SettingsDialog";
        QTest::newRow("about") << "action_AboutZephrantDialog"
                               << "AboutZephrantDialog";
        QTest::newRow("new") << "action_New"
                             << "NewFileDialog";
        for (const auto table : {importDialogs(), toolDialogs()}) {
            for (const DialogEntry &entry : table)
                QTest::newRow(entry.title)
                    << entry.object << entry.make(nullptr)->metaObject()->className();
        }
    }

    void dialogEntriesAreHelpedByTheirDialogsTitles()
    {
        for (const auto table : {importDialogs(), toolDialogs()}) {
            for (const DialogEntry &entry : table) {
                QCOMPARE(action(entry.object)->text(), QString(entry.text));
                QCOMPARE(action(entry.object)->whatsThis(),
                         "To show the \"" + entry.make(nullptr)->windowTitle() +
                             "\" dialog.");
            }
        }
    }

    void dialogEntriesRunTheirDialogs()
    {
        QFETCH(QString, entry);
        QVERIFY(action(entry)->isEnabled());
        QString shown;
        ModalAnswers answers;
        answers.withDialog([&](QDialog *dialog) {
            shown = dialog->metaObject()->className();
            dialog->reject();
        });
        action(entry)->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QTEST(shown, "dialogClass");
        QVERIFY(windows().isEmpty());
    }

private:
    [[nodiscard]] QMdiArea *area() const { return m_window->findChild<QMdiArea *>(); }
    [[nodiscard]] QString message() const
    {
        return m_window->statusBar()->currentMessage();
    }
    // A key as the window system brings it: to the window, which asks for shortcuts.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }
    void openImages(int count)
    {
        for (int i = 0; i < count; ++i) {
            const QString path = m_dir->filePath(QStringLiteral("p%1.png").arg(i));
            QImage image(100, 80, QImage::Format_RGB32);
            image.fill(Qt::darkGreen);
            QVERIFY(image.save(path));
            m_window->open(path);
        }
        QCOMPARE(windows().size(), count);
    }
};

QTEST_MAIN(TestMainWindowMenus)
#include "test_mainwindow_menus.moc"
