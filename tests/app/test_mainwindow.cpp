#include "app/mainwindow.h"

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/modalanswer.h"
#include "support/settle.h"
#include "views/imagemdichild.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QScreen>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

/// Documents of the workspace: opened, made new, saved, closed; the recent files.
class TestMainWindow : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        AppSettings().clear();
        QApplication::clipboard()->clear();
        restart();
    }
    void cleanup() { m_window.reset(); }

    void nameAloneDecidesTheKindOfView_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("scenery");
        QTest::newRow("lower case") << "a.zph" << true;
        QTest::newRow("upper case") << "b.ZPH" << true;
        QTest::newRow("mixed") << "c.Zph" << true;
        QTest::newRow("without a dot") << "xzph" << true;
        QTest::newRow("nothing but the three") << "zph" << true;
        QTest::newRow("other end") << "a.zph.txt" << false;
        QTest::newRow("no picture") << "a.png" << false;
        QTest::newRow("one letter") << "h" << false;
    }

    void nameAloneDecidesTheKindOfView()
    {
        QFETCH(QString, name);
        QFETCH(bool, scenery);
        const QString path = m_dir.filePath(name);
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(scenery ? "[Param]\n" : "no picture at all\n");
        file.close();
        ModalAnswers answers;
        if (!scenery)
            answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(path),
                                QMessageBox::Ok);
        m_window->open(path);
        QCOMPARE(answers.complaints(), QStringList());
        if (!scenery) {
            QVERIFY(windows().isEmpty());
            return;
        }
        QCOMPARE(windows().size(), 1);
        QCOMPARE(windows()[0]->widget()->metaObject()->className(), "SceneryMdiChild");
    }

    void openAsksForAFileAndRemembersFilterAndFolder()
    {
        const QString path = picture("a.png");
        ModalAnswers answers;
        answers.chooseFile("Open File", path,
                           "Image File (*.bmp *.jpg *.png *.ppm *.tga *.tif)");
        action("action_Open")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(AppSettings().value("selectedFilter").toString(),
                 QString("Image File (*.bmp *.jpg *.png *.ppm *.tga *.tif)"));
        QCOMPARE(AppSettings().value("mostRecentAbsolutePath").toString(),
                 QFileInfo(path).absolutePath());
        QCOMPARE(message(), QString("File loaded"));
        QVERIFY(qobject_cast<ImageMdiChild *>(m_window->activeMdiChild()));
        QCOMPARE(m_window->activeMdiChild()->windowTitle(), QString("a.png[*]"));
    }

    void cancelledOpenStoresNothing()
    {
        ModalAnswers answers;
        answers.cancelFile("Open File");
        action("action_Open")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!AppSettings().contains("selectedFilter"));
        QVERIFY(windows().isEmpty());
    }

    void failedLoadLeavesNoEmptyWindow()
    {
        const QString path = m_dir.filePath("none.png");
        ModalAnswers answers;
        answers.pressButton(
            "Error",
            QString("Cannot load file \"%1\":\nNo such file or directory.").arg(path),
            QMessageBox::Ok);
        m_window->open(path);
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(windows().isEmpty());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(area()->findChildren<QMdiSubWindow *>().isEmpty());
        QVERIFY(!action("action_OpenMRU1")->isVisible());
        QVERIFY(message() != "File loaded");
    }

    void failedLoadBesideAnOpenViewKeepsThatActive()
    {
        m_window->open(picture("a.png"));
        MdiChild *const first = m_window->activeMdiChild();
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->accept(); });
        m_window->open(m_dir.filePath("none.png"));
        QCOMPARE(windows().size(), 1);
        QCOMPARE(m_window->activeMdiChild(), first);
        QVERIFY(action("action_Save")->isEnabled());
    }

    void viewThatClosesItselfTakesItsWindowAlong()
    {
        m_window->open(picture("a.png"));
        QVERIFY(m_window->activeMdiChild()->close());
        QTRY_VERIFY(windows().isEmpty());
        QVERIFY(!action("action_Save")->isEnabled());
    }

    void openAndUnmodifiedFileIsOnlyActivated()
    {
        const QString a = picture("a.png");
        const QString b = picture("b.png");
        m_window->open(a);
        m_window->open(b);
        m_window->statusBar()->clearMessage();
        // Another name of the same file.
        m_window->open(m_dir.filePath("./a.png"));
        QCOMPARE(windows().size(), 2);
        QCOMPARE(area()->activeSubWindow(), windows()[0]);
        QCOMPARE(message(), QString());
        QCOMPARE(recent(), (QStringList{b, a, "", ""}));
    }

    void openAndModifiedFileAsksWhetherToRevert_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("reverts");
        QTest::newRow("yes") << int(QMessageBox::Yes) << true;
        QTest::newRow("no") << int(QMessageBox::No) << false;
    }

    void openAndModifiedFileAsksWhetherToRevert()
    {
        QFETCH(int, answer);
        QFETCH(bool, reverts);
        const QString a = picture("a.png");
        const QString b = picture("b.png");
        m_window->open(a);
        MdiChild *const view = m_window->activeMdiChild();
        view->setWindowModified(true);
        m_window->open(b);
        m_window->statusBar()->clearMessage();
        ModalAnswers answers;
        answers.pressButton("Revert File",
                            "By reverting the file to the state saved on disk, you will "
                            "lose all changes.\nOK to revert?",
                            QMessageBox::StandardButton(answer));
        m_window->open(a);
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(m_window->activeMdiChild(), view);
        QCOMPARE(view->isModified(), !reverts);
        QCOMPARE(message() == "File loaded", reverts);
        QCOMPARE(recent(),
                 reverts ? QStringList({a, b, "", ""}) : QStringList({b, a, "", ""}));
        view->setWindowModified(false);
    }

    void recentEntryOpensWhatTheSettingsSay()
    {
        m_window->open(picture("a.png"));
        const QString b = picture("b.png");
        AppSettings().setValue("mostRecentFile1", b);
        AppSettings().setValue("mostRecentFile4", b);
        action("action_OpenMRU4")->trigger();
        QCOMPARE(m_window->activeMdiChild()->currentFile(),
                 QFileInfo(b).canonicalFilePath());
        AppSettings().setValue("mostRecentFile3", "");
        action("action_OpenMRU3")->trigger();
        QCOMPARE(windows().size(), 2);
    }

    void storedRecentFilesShowAtStart()
    {
        AppSettings().setValue("mostRecentFile2", "/x/two.zph");
        restart();
        QVERIFY(!action("action_OpenMRU1")->isVisible());
        QCOMPARE(action("action_OpenMRU2")->text(), QString("/x/two.zph"));
        QVERIFY(action("action_OpenMRU2")->isVisible());
    }

    void newImageHasTheSizeAskedFor()
    {
        newImage("30", "20");
        const auto *const view =
            qobject_cast<ImageMdiChild *>(m_window->activeMdiChild());
        QVERIFY(view);
        QCOMPARE(view->findChild<QLabel *>()->pixmap().size(), QSize(30, 20));
        QCOMPARE(recent(), (QStringList{"", "", "", ""}));
    }

    void newImageWithoutWidthLeavesAnEmptyView()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>("radioButtonImage")->click();
            dialog->findChild<QLineEdit *>("lineEditWidth")->setText("0");
            dialog->accept();
        });
        answers.pressButton("Error", "Cannot create image.", QMessageBox::Ok);
        action("action_New")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(windows().size(), 1);
        QVERIFY(windows()[0]->findChild<QLabel *>()->pixmap().isNull());
    }

    void cancelledNewMakesNothing()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->reject(); });
        action("action_New")->trigger();
        QVERIFY(windows().isEmpty());
    }

    void saveAsIsRememberedAndSaveIsNot()
    {
        newImage("30", "20");
        const QString first = m_dir.filePath("first.png");
        ModalAnswers answers;
        answers.chooseFile("Save As", first);
        action("action_Save")->trigger();
        QCOMPARE(message(), QString("File saved"));
        QCOMPARE(recent(), (QStringList{"", "", "", ""}));
        const QString second = m_dir.filePath("second.tga");
        answers.chooseFile("Save As", second);
        m_window->statusBar()->clearMessage();
        action("action_SaveAs")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(message(), QString("File saved"));
        QCOMPARE(recent()[0], QFileInfo(second).canonicalFilePath());
        QCOMPARE(loadImageFile(second).size(), QSize(30, 20));
    }

    void cancelKeepsTheWindowOfAModifiedView()
    {
        m_window->open(picture("a.png"));
        MdiChild *const view = m_window->activeMdiChild();
        view->setWindowModified(true);
        ModalAnswers answers;
        expectCloseQuestion(answers, view, QMessageBox::Cancel);
        action("action_Close")->trigger();
        settle();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(windows().size(), 1);
        QVERIFY(view->isVisible());
        QCOMPARE(m_window->activeMdiChild(), view);
        view->setWindowModified(false);
    }

    void refusedViewKeepsTheProgramOpen()
    {
        m_window->open(picture("a.png"));
        MdiChild *const view = m_window->activeMdiChild();
        view->setWindowModified(true);
        ModalAnswers answers;
        expectCloseQuestion(answers, view, QMessageBox::Cancel);
        QVERIFY(!m_window->close());
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(m_window->isVisible());
        QVERIFY(!AppSettings().contains("MainWindow/Size"));
        expectCloseQuestion(answers, view, QMessageBox::No);
        QVERIFY(m_window->close());
        QCOMPARE(answers.complaints(), QStringList());
    }

    void geometryIsStoredOnCloseAndReadAtStart()
    {
        QCOMPARE(m_window->size(), QSize(400, 400));
        QCOMPARE(m_window->pos(), QPoint(200, 200));
        m_window->move(120, 90);
        m_window->resize(640, 410);
        settle();
        QVERIFY(m_window->close());
        QCOMPARE(AppSettings().value("MainWindow/Position").toPoint(), QPoint(120, 90));
        QCOMPARE(AppSettings().value("MainWindow/Size").toSize(), QSize(640, 410));
        restart();
        QCOMPARE(m_window->size(), QSize(640, 410));
        QCOMPARE(m_window->pos(), QPoint(120, 90));
    }

    void windowStoredOffEveryScreenComesBack()
    {
        AppSettings().setValue("MainWindow/Position", QPoint(-5000, 9000));
        AppSettings().setValue("MainWindow/Size", QSize(300, 200));
        restart();
        QVERIFY(
            m_window->screen()->availableGeometry().contains(m_window->frameGeometry()));
        QCOMPARE(m_window->size(), QSize(300, 200));
    }

    void programEndsWithViewsStillOpen()
    {
        m_window->open(picture("a.png"));
        m_window->open(picture("b.png"));
        QList<QPointer<MdiChild>> views;
        for (MdiChild *const view : m_window->findChildren<MdiChild *>())
            views.append(view);
        QCOMPARE(views.size(), 2);
        m_window.reset();
        for (const QPointer<MdiChild> &view : views)
            QVERIFY(view.isNull());
    }

private:
    void restart()
    {
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void newImage(const QString &width, const QString &height)
    {
        ModalAnswers answers;
        answers.withDialog([&](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>("radioButtonImage")->click();
            dialog->findChild<QLineEdit *>("lineEditWidth")->setText(width);
            dialog->findChild<QLineEdit *>("lineEditHeight")->setText(height);
            dialog->accept();
        });
        action("action_New")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
    }
    static void expectCloseQuestion(ModalAnswers &answers, const MdiChild *view,
                                    QMessageBox::StandardButton button)
    {
        answers.pressButton(
            "Close File",
            QString("The file has been modified:\n\"%1\"\nSave the changes?")
                .arg(view->currentFile()),
            button);
    }
    [[nodiscard]] QMdiArea *area() const { return m_window->findChild<QMdiArea *>(); }
    [[nodiscard]] QList<QMdiSubWindow *> windows() const
    {
        return area()->subWindowList();
    }
    [[nodiscard]] QAction *action(const QString &name) const
    {
        return m_window->findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
    }
    [[nodiscard]] QString message() const
    {
        return m_window->statusBar()->currentMessage();
    }
    static QStringList recent()
    {
        const AppSettings settings;
        QStringList names;
        for (int i = 1; i <= 4; ++i)
            names << settings.value(QString("mostRecentFile%1").arg(i)).toString();
        return names;
    }
    [[nodiscard]] QString picture(const QString &name) const
    {
        const QString path = m_dir.filePath(name);
        QImage image(100, 80, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        return saveImageFile(image, path) ? path : QString();
    }

    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
};

QTEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
