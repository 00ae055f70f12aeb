#include "views/imagemdichild.h"

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/modalanswer.h"
#include "views/imageviewfixture.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/resource.h>

int qInitResources_Zephrant();

class TestImageMdiChild : public QObject, private ImageViewFixture {
    Q_OBJECT

private slots:
    void initTestCase() { qInitResources_Zephrant(); }

    void init() { openView(); }
    void cleanup() { closeView(); }

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
#ifdef ZEPHRANT_SANITIZED
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
        QCOMPARE(m_view->currentFile(), path);
        QCOMPARE(m_view->windowTitle(), QString("x.png[*]"));
        QVERIFY(!m_view->isWindowModified());
    }

    void failedSaveOfANamedPictureTellsItsName()
    {
        QVERIFY(QDir().mkpath(m_dir.filePath("gone")));
        const QString path = m_dir.filePath("gone/a.png");
        QVERIFY(QFile::copy(picture(40, 30), path));
        QVERIFY(m_view->loadFile(path));
        QVERIFY(QDir(m_dir.filePath("gone")).removeRecursively());
        ModalAnswers answers;
        for (int attempt = 1; attempt <= 2; ++attempt) {
            answers.pressButton("Error", QString("Cannot save \"%1\".").arg(path),
                                QMessageBox::Ok);
            QVERIFY(!m_view->save());
            QCOMPARE(answers.complaints(), QStringList());
            QCOMPARE(m_view->currentFile(), path);
            QCOMPARE(m_view->windowTitle(), QString("a.png[*]"));
        }
    }

    void pictureOfAFailedSaveIsNotLostInSilence()
    {
        QVERIFY(m_view->loadFile(picture(40, 30)));
        const QString path = m_dir.filePath("none/x.png");
        const QString closing =
            QString("The file has been modified:\n\"%1\"\nSave the changes?").arg(path);
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot save \"%1\".").arg(path),
                            QMessageBox::Ok);
        QVERIFY(!m_view->saveFile(path));
        answers.pressButton("Close File", closing, QMessageBox::Cancel);
        QVERIFY(!m_view->close());
        // Saved elsewhere it closes as any other.
        QVERIFY(m_view->saveFile(m_dir.filePath("rescued.png")));
        QVERIFY(m_view->close());
        QCOMPARE(answers.complaints(), QStringList());
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
};

QTEST_MAIN(TestImageMdiChild)
#include "test_imagemdichild.moc"
