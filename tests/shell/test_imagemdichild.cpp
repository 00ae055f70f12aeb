#include "shell/imagemdichild.h"

#include "raster/imagefile.h"
#include "shell/appsettings.h"
#include "shell/workspacewindow.h"
#include "support/modalanswer.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>

int qInitResources_Zephrant();

namespace {

/// A main window that shows one view.
class Workspace : public QMainWindow, public WorkspaceWindow {
public:
    Workspace() { fit->setCheckable(true); }
    [[nodiscard]] MdiChild *activeMdiChild() const override { return active; }
    void showMessage(const QString &text, int) override { message = text; }
    [[nodiscard]] QAction *getAction_FitToWindow() const override { return fit; }

    MdiChild *active = nullptr;
    QString message;
    QAction *fit = new QAction(this);
};

} // namespace

class TestImageMdiChild : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qInitResources_Zephrant(); }

    void init()
    {
        AppSettings().clear();
        QApplication::clipboard()->clear();
        m_workspace = std::make_unique<Workspace>();
        m_view = new ImageMdiChild(m_workspace.get());
        m_view->setWindowFlags(Qt::Widget);
        m_workspace->setCentralWidget(m_view);
        m_workspace->active = m_view;
        m_workspace->resize(500, 400);
        m_workspace->show();
        m_workspace->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_workspace.get()));
    }
    void cleanup() { m_workspace.reset(); }

    void zoomStepsAreAQuarter()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        QCOMPARE(m_workspace->message, QString("100%"));
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
        QCOMPARE(label()->size(), QSize(250, 188));
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("156%"));
        m_view->slotZoomOut();
        QCOMPARE(m_workspace->message, QString("125%"));
        QCOMPARE(label()->size(), QSize(250, 188));
        m_view->slotNormalSize();
        QCOMPARE(label()->size(), QSize(200, 150));
    }

    void zoomWithoutAPictureDoesNothing()
    {
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString());
    }

    void zoomHasNoLimitsAndDoesNoHarm()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        for (int i = 0; i < 4000; ++i)
            m_view->slotZoomIn();
        QCOMPARE(label()->size(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        QTest::qWait(20); // paints
        moveMouse({5, 5});
        for (int i = 0; i < 8000; ++i)
            m_view->slotZoomOut();
        QTest::qWait(20);
        moveMouse({6, 6});
        m_view->slotNormalSize();
        QCOMPARE(label()->size(), QSize(200, 150));
    }

    void enlargedPictureShowsTheRightPart()
    {
        // Left half red, right half blue, enlarged beyond what a copy is kept for.
        QImage image(100, 100, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int y = 0; y < 100; ++y)
            std::fill_n(reinterpret_cast<QRgb *>(image.scanLine(y)) + 50, 50,
                        0xFF0000FFu);
        m_view->setPixmap(&image, true);
        while (label()->width() < 8000)
            m_view->slotZoomIn();
        auto *const bar = scrollArea()->horizontalScrollBar();
        const int y = label()->height() / 2;
        const int width = label()->width();
        bar->setValue(0);
        QCOMPARE(label()->grab(QRect(10, y, 4, 4)).toImage().pixel(1, 1), 0xFFFF0000u);
        QCOMPARE(label()->grab(QRect(width - 14, y, 4, 4)).toImage().pixel(1, 1),
                 0xFF0000FFu);
        const QImage middle = label()->grab(QRect(width / 2 - 100, y, 200, 4)).toImage();
        QCOMPARE(middle.pixel(1, 1), 0xFFFF0000u);
        QCOMPARE(middle.pixel(198, 1), 0xFF0000FFu);
    }

    void zoomKeepsTheMiddleOfTheView()
    {
        QVERIFY(m_view->loadFile(picture(2000, 1500)));
        QScrollBar *const bar = scrollArea()->horizontalScrollBar();
        bar->setValue(400);
        const int page = bar->pageStep();
        m_view->slotZoomIn();
        // 1.25 * 400 + 0.25 * page / 2
        QCOMPARE(bar->value(), int(500 + 0.125 * page));
    }

    void zoomReachesTheActiveViewOnly()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        ImageMdiChild other;
        m_workspace->active = &other;
        m_view->slotZoomIn();
        m_view->slotFitToWindow();
        QCOMPARE(label()->size(), QSize(200, 150));
        QVERIFY(!m_view->isFitToWindow());
    }

    void zoomReachesThePictureOfTheActiveScenery()
    {
        ImageMdiChild scenery;
        auto *const render = new ImageMdiChild(&scenery);
        m_workspace->active = &scenery;
        const QImage frame(40, 20, QImage::Format_RGB32);
        render->setPixmap(&frame, true);
        render->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
    }

    void fitFillsTheWindowAndZoomGoesOn()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        m_view->slotFitToWindow();
        QVERIFY(m_view->isFitToWindow());
        QVERIFY(m_workspace->fit->isChecked());
        QVERIFY(scrollArea()->widgetResizable());
        QTRY_COMPARE(label()->size(), scrollArea()->viewport()->size());
        for (const char *name : {"action_ZoomIn", "action_ZoomOut", "action_NormalSize"})
            QVERIFY(!m_view->findChild<QAction *>(name)->isEnabled());
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
        m_view->slotFitToWindow();
        QVERIFY(!m_view->isFitToWindow());
        QVERIFY(!m_workspace->fit->isChecked());
        QCOMPARE(label()->size(), QSize(200, 150));
        QVERIFY(m_view->findChild<QAction *>("action_ZoomIn")->isEnabled());
    }

    void fitAlsoActsWithoutAnActiveView()
    {
        m_workspace->active = nullptr;
        m_view->slotFitToWindow();
        QVERIFY(m_view->isFitToWindow());
    }

    void viewStartsInNormalModeBesideOneInFitMode()
    {
        m_view->slotFitToWindow();
        const ImageMdiChild second;
        QVERIFY(!second.isFitToWindow());
        QVERIFY(!second.findChild<QScrollArea *>()->widgetResizable());
    }

    void mouseShowsThePositionFromTheBottomLine()
    {
        QVERIFY(m_view->loadFile(picture(300, 1000)));
        moveMouse({7, 0});
        QCOMPARE(m_workspace->message, QString("100% - 7/999"));
        m_view->slotZoomIn();
        m_view->slotZoomIn();
        scrollArea()->verticalScrollBar()->setValue(0);
        moveMouse({100, 50});
        // 100 / 1.5625 = 64, 50 / 1.5625 = 32
        QCOMPARE(m_workspace->message, QString("156% - 64/967"));
    }

    void mouseMayLeaveThePicture()
    {
        QVERIFY(m_view->loadFile(picture(20, 10)));
        moveMouse({30, 15});
        QCOMPARE(m_workspace->message, QString("100% - 30/-6"));
    }

    void smallPictureMakesTheWindowFit_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("window");
        QTest::newRow("largest that fits") << QSize(400, 300) << QSize(402, 302);
        QTest::newRow("wider") << QSize(401, 300) << QSize(600, 400);
        QTest::newRow("higher") << QSize(400, 301) << QSize(600, 400);
        QTest::newRow("below the least window") << QSize(10, 10) << QSize(300, 200);
    }

    void smallPictureMakesTheWindowFit()
    {
        QFETCH(QSize, picture);
        ImageMdiChild view;
        view.resizeWhereFeasible();
        QCOMPARE(view.size(), QSize(600, 400));
        const QImage image(picture, QImage::Format_RGB32);
        view.setPixmap(&image, false);
        view.resizeWhereFeasible();
        QTEST(view.size(), "window");
    }

    void newPicturesAreWhiteAndNumbered()
    {
        auto *const first = new ImageMdiChild(m_workspace.get());
        auto *const second = new ImageMdiChild(m_workspace.get());
        first->newFile(QSize(30, 20));
        second->newFile(QSize(30, 20));
        QCOMPARE(first->currentFile(), QString("document1.png"));
        QCOMPARE(second->windowTitle(), QString("document2.png[*]"));
        QVERIFY(!second->isModified());
        const auto *const shown = second->findChild<QLabel *>();
        QCOMPARE(shown->size(), QSize(30, 20));
        QCOMPARE(shown->pixmap().toImage().pixel(29, 19), 0xFFFFFFFFu);
    }

    void pictureWithoutWidthCannotBeCreated()
    {
        ModalAnswers answers;
        answers.pressButton("Error", "Cannot create image.", QMessageBox::Ok);
        m_view->newFile(QSize(0, 576));
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(label()->pixmap().isNull());
    }

    void complaintsOfLoading()
    {
        const QString junk = m_dir.filePath("junk.png");
        QFile file(junk);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("no picture");
        file.close();
        const QString missing = m_dir.filePath("missing.png");
        ModalAnswers answers;
        answers.pressButton("Error", "Cannot load file:\nThe given filename is empty.\n",
                            QMessageBox::Ok);
        answers.pressButton(
            "Error",
            QString("Cannot load file \"%1\":\nNo such file or directory.").arg(missing),
            QMessageBox::Ok);
        answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(junk),
                            QMessageBox::Ok);
        QVERIFY(!m_view->loadFile({}));
        QVERIFY(!m_view->loadFile(missing));
        QVERIFY(!m_view->loadFile(junk));
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(label()->pixmap().isNull());
    }

    // The toolkit refuses pictures above 128 MB by itself.
    void largePictureLoads()
    {
        const QString path = m_dir.filePath("large.png");
        QImage image(12000, 3000, QImage::Format_Grayscale8); // 144 MB in colour
        image.fill(7);
        image.setPixel(11999, 2999, qRgb(9, 9, 9));
        QVERIFY(saveImageFile(image.convertToFormat(QImage::Format_RGB32), path));
        QVERIFY(m_view->loadFile(path));
        QCOMPARE(label()->pixmap().toImage().pixel(11999, 2999), 0xFF090909u);
    }

    // 65535 by 65535 pixels in a file of 18 bytes: 17 GB that no one has.
    void pictureThatMemoryCannotHoldIsRefused()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the address sanitizer needs the address space for itself");
#endif
        const QString path = m_dir.filePath("enormous.tga");
        QByteArray head(18, '\0');
        head[2] = 2;
        head[12] = head[13] = head[14] = head[15] = '\xFF';
        head[16] = 24;
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(head);
        file.close();
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(path),
                            QMessageBox::Ok);
        rlimit before{};
        getrlimit(RLIMIT_AS, &before);
        rlimit tight = before;
        tight.rlim_cur = rlim_t(4) << 30;
        setrlimit(RLIMIT_AS, &tight);
        const bool loaded = m_view->loadFile(path);
        setrlimit(RLIMIT_AS, &before);
        QVERIFY(!loaded);
        QCOMPARE(answers.complaints(), QStringList());
    }

    void savedPictureIsTheOneShown_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"a.bmp", "a.png", "a.ppm", "a.tga", "a.tif", "A.TGA"})
            QTest::newRow(name) << name;
    }

    void savedPictureIsTheOneShown()
    {
        QFETCH(QString, name);
        QVERIFY(m_view->loadFile(picture(40, 30)));
        const QString path = m_dir.filePath(name);
        ModalAnswers answers;
        answers.chooseFile("Save As", path);
        QVERIFY(m_view->saveAs());
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(m_view->currentFile(), QFileInfo(path).canonicalFilePath());
        QCOMPARE(loadImageFile(path).convertToFormat(QImage::Format_RGB32),
                 label()->pixmap().toImage().convertToFormat(QImage::Format_RGB32));
    }

    void failedSaveStillRenamesTheView()
    {
        QVERIFY(m_view->loadFile(picture(40, 30)));
        m_view->setWindowModified(true);
        const QString path = m_dir.filePath("none/x.png");
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot save \"%1\".").arg(path),
                            QMessageBox::Ok);
        QVERIFY(!m_view->saveFile(path));
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_view->isModified());
        QCOMPARE(m_view->windowTitle(), QString("[*]"));
    }

    void emptyViewCannotBeSaved()
    {
        const QString path = m_dir.filePath("empty.png");
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot save \"%1\".").arg(path),
                            QMessageBox::Ok);
        QVERIFY(!m_view->saveFile(path));
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!QFile::exists(path));
    }

    void pasteIntoAnEmptyViewModifiesIt()
    {
        QVERIFY(!m_view->paste());
        QVERIFY(!m_view->copy());
        m_view->newFile();
        QPixmap pixmap(33, 22);
        pixmap.fill(Qt::magenta);
        QApplication::clipboard()->setPixmap(pixmap);
        QVERIFY(m_view->paste());
        QVERIFY(m_view->isModified());
        QCOMPARE(label()->size(), QSize(33, 22));
        const QString path = m_dir.filePath("pasted.png");
        ModalAnswers answers;
        answers.chooseFile("Save As", path);
        QVERIFY(m_view->save()); // untitled: asks for a name
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_view->isModified());
        QApplication::clipboard()->clear();
        QVERIFY(m_view->copy());
        QCOMPARE(QApplication::clipboard()->pixmap().size(), QSize(33, 22));
    }

    void closingAsks_data()
    {
        QTest::addColumn<bool>("modified");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<bool>("storesMaximized");
        QTest::newRow("unmodified") << false << 0 << true << true;
        QTest::newRow("no") << true << int(QMessageBox::No) << true << true;
        QTest::newRow("cancel") << true << int(QMessageBox::Cancel) << false << false;
        QTest::newRow("yes") << true << int(QMessageBox::Yes) << true << false;
    }

    void closingAsks()
    {
        QFETCH(bool, modified);
        QFETCH(int, answer);
        QVERIFY(m_view->loadFile(picture(40, 30)));
        m_view->setWindowModified(modified);
        ModalAnswers answers;
        if (modified)
            answers.pressButton(
                "Close File",
                QString("The file has been modified:\n\"%1\"\nSave the changes?")
                    .arg(m_view->currentFile()),
                QMessageBox::StandardButton(answer));
        QTEST(m_view->close(), "closes");
        QCOMPARE(answers.complaints(), QStringList());
        QTEST(AppSettings().contains("ImageMdiChild/Maximized"), "storesMaximized");
    }

    void failedSaveKeepsTheViewOpen()
    {
        QVERIFY(m_view->loadFile(picture(40, 30)));
        m_view->setWindowModified(true);
        const QString path = m_view->currentFile();
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path)); // a folder in the way
        ModalAnswers answers;
        answers.pressButton(
            "Close File",
            QString("The file has been modified:\n\"%1\"\nSave the changes?").arg(path),
            QMessageBox::Yes);
        answers.pressButton("Error", QString("Cannot save \"%1\".").arg(path),
                            QMessageBox::Ok);
        QVERIFY(!m_view->close());
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(QDir().rmdir(path));
    }

    void viewOfARunningRenderStaysOpen()
    {
        m_view->setMayBeClosed(false);
        QVERIFY(!m_view->close());
        QVERIFY(!AppSettings().contains("ImageMdiChild/Maximized"));
        m_view->setMayBeClosed(true);
        QVERIFY(m_view->close());
    }

    void escapeDoesNotClose()
    {
        QTest::keyClick(m_view, Qt::Key_Escape);
        QVERIFY(m_view->isVisible());
    }

private:
    [[nodiscard]] QLabel *label() const
    {
        return qobject_cast<QLabel *>(scrollArea()->widget());
    }
    [[nodiscard]] QScrollArea *scrollArea() const
    {
        return m_view->findChild<QScrollArea *>();
    }
    // A move of the pointer over the view, which lands on its innermost widget.
    void moveMouse(QPoint place)
    {
        m_workspace->message.clear();
        QTest::mouseMove(m_workspace->windowHandle(),
                         m_view->mapTo(m_workspace.get(), place));
        QTest::qWait(10);
    }
    [[nodiscard]] QString picture(int width, int height) const
    {
        const QString path =
            m_dir.filePath(QStringLiteral("%1x%2.png").arg(width).arg(height));
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(qRgb(10, 20, 200));
        image.setPixel(width - 1, 0, qRgb(1, 2, 3));
        return saveImageFile(image, path) ? path : QString();
    }

    QTemporaryDir m_dir;
    std::unique_ptr<Workspace> m_workspace;
    ImageMdiChild *m_view = nullptr;
};

QTEST_MAIN(TestImageMdiChild)
#include "test_imagemdichild.moc"
