// Files that are given to the program, or dropped on it, and what is offered for them.

#include "app/terrainopener.h"
#include "app/windowfixture.h"
#include "raster/elevationimage.h"
#include "support/modalanswer.h"
#include "views/imagemdichild.h"

#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QStatusBar>
#include <QTableWidget>
#include <QTimer>
#include <QUrl>

namespace {

// Reads what ends in ".hgt", and answers a while after it was asked.
class Opener : public TerrainOpener {
public:
    explicit Opener(QStringList &heard) : m_heard(heard) {}
    void openTerrain(const QStringList &files) override
    {
        m_heard << "terrain " + files.join(' ');
    }
    void openTrack(const QString &file) override { m_heard << "track " + file; }
    void askWhetherRead(const QString &file, std::function<void(bool)> answer) override
    {
        QTimer::singleShot(5, [file, answer] { answer(file.endsWith(".hgt")); });
    }
    void askLibrary(std::function<void(const Result<QStringList> &)> answer) override
    {
        QTimer::singleShot(5, [answer] { answer(QStringList{"GDAL", "3.6.2", "MIT"}); });
    }

private:
    QStringList &m_heard;
};

} // namespace

class TestMainWindowFiles : public QObject, private WindowFixture {
    Q_OBJECT

private slots:
    void init()
    {
        m_heard.clear();
        openWindow();
        m_window->setTerrainOpener({});
    }
    void cleanup() { closeWindow(); }

    void picturesAreOpenedAsByFileOpen()
    {
        useOpener();
        m_window->openGiven({picture("a.png"), picture("b.tif")});
        QCOMPARE(titles(), QStringList({"a.png[*]", "b.tif[*]"}));
        QCOMPARE(m_heard, QStringList());
    }

    void terrainBecomesOneTerrain()
    {
        useOpener();
        const QString a = touch("a.hgt"), b = touch("b.hgt");
        const QString tiff = sixteenBits("c.tif");
        m_window->openGiven({a, picture("p.png"), tiff, b});
        QTRY_COMPARE(m_heard, QStringList({"terrain " + a + ' ' + tiff + ' ' + b}));
        QCOMPARE(titles(), QStringList({"p.png[*]"}));
    }

    void whatNobodyReadsIsToldByFileOpen()
    {
        useOpener();
        const QString junk = touch("a.xyz");
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(junk),
                            QMessageBox::Ok);
        m_window->openGiven({junk});
        QTRY_COMPARE(answers.complaints(), QStringList());
        QVERIFY(titles().isEmpty());
        QCOMPARE(m_heard, QStringList());
    }

    void trackNeedsAScenery()
    {
        useOpener();
        const QString track = touch("a.gpx");
        m_window->openGiven({track});
        QCOMPARE(m_heard, QStringList({"terrain " + track}));
        m_heard.clear();
        m_window->openGiven({scenery("s.zph", ""), track});
        QCOMPARE(m_heard, QStringList({"track " + track}));
    }

    void missingPartIsToldInOneSentence()
    {
        const QString tiff = sixteenBits("c.tif");
        m_window->openGiven({tiff, touch("a.gpx")});
        QCOMPARE(notice(), QString("\"c.tif\" and 1 more: Open Terrain is missing; it "
                                   "needs the library GDAL (package libgdal32)."));
        hintButton()->click();
        QCOMPARE(titles(), QStringList({"c.tif[*]"}));
    }

    void refusedFileIsOffered()
    {
        useOpener();
        const QString file = touch("a.hgt");
        ModalAnswers answers;
        answers.pressButton("Error", QString("Cannot load file \"%1\".").arg(file),
                            QMessageBox::Ok);
        m_window->open(file);
        QCOMPARE(answers.complaints(), QStringList());
        QTRY_COMPARE(notice(), QString("Open Terrain reads \"a.hgt\"."));
        hintButton()->click();
        QCOMPARE(m_heard, QStringList({"terrain " + file}));
    }

    void droppedFilesAreOpened()
    {
        useOpener();
        const QString terrain = touch("a.hgt");
        QMimeData data;
        data.setUrls(
            {QUrl::fromLocalFile(picture("a.png")), QUrl::fromLocalFile(terrain)});
        // From the workspace, and from a picture in it.
        auto *const area = m_window->findChild<QMdiArea *>();
        QVERIFY(!area->viewport()->acceptDrops());
        drop(&data);
        QTRY_COMPARE(m_heard, QStringList({"terrain " + terrain}));
        QCOMPARE(titles(), QStringList({"a.png[*]"}));
        const auto views = m_window->findChildren<ImageMdiChild *>();
        QVERIFY(!views.isEmpty() && !views.first()->acceptDrops());
    }

    void textIsNotTaken()
    {
        QMimeData data;
        data.setText("a.png");
        QVERIFY(!drop(&data));
        data.setUrls({QUrl("https://example.org/a.png")});
        QVERIFY(!drop(&data));
        QTest::qWait(10);
        QVERIFY(titles().isEmpty());
    }

    void elevationsOfOtherNumbersAreTold()
    {
        const QString heights = sixteenBits("h.tif");
        const QString told =
            '"' + heights +
            "\" holds numbers of 16 bits, not heights of 24 bits; Open Terrain reads it.";
        m_window->open(scenery("s.zph", "HDateiname=h.tif\n")); // beside the scenery
        QTRY_COMPARE(notice(), told);
        QVERIFY(!hintButton()->isVisible());
        auto *const field = m_window->findChild<QLineEdit *>("lineEditElevationFile");
        field->setText(picture("e.png"));
        QTRY_COMPARE(notice(), QString());
        useOpener();
        field->setText(heights);
        QTRY_COMPARE(notice(), told);
        hintButton()->click();
        QCOMPARE(m_heard, QStringList({"terrain " + heights}));
        m_window->findChild<QMdiArea *>()->closeAllSubWindows();
        QTRY_COMPARE(notice(), QString());
    }

    void extrasThatAreNotUnderstoodAreTold()
    {
        m_window->open(scenery("s.zph", "\n[Extras]\nFramesPerSecond=many\n"));
        QVERIFY2(notice().contains("FramesPerSecond=many"), qPrintable(notice()));
        m_window->open(scenery("t.zph", "\n[Extras]\nFramesPerSecond=30\n"));
        QCOMPARE(notice(), QString());
    }

    void heightUnderTheMouseHasAField()
    {
        m_window->open(elevation("e.png"));
        auto *const field = m_window->statusBar()->findChild<QLabel *>("labelHeight");
        auto *const view = m_window->findChild<ImageMdiChild *>();
        QVERIFY(!field->isVisible());
        QVERIFY(action("action_ElevationPicture")->isChecked());
        emit view->heightTold("Height 7");
        QCOMPARE(field->text(), QString("Height 7"));
        QVERIFY(field->isVisible());
        emit view->heightTold(QString());
        QVERIFY(!field->isVisible());
        action("action_ShadedRelief")->trigger();
        QVERIFY(view->isShadedRelief());
        action("action_ElevationPicture")->trigger();
        QVERIFY(!view->isElevation() && !view->isShadedRelief());
        QVERIFY(!action("action_ShadedRelief")->isChecked());
        m_window->findChild<QMdiArea *>()->closeAllSubWindows();
        QTRY_VERIFY(!action("action_ShadedRelief")->isEnabled());
    }

    void librariesAreListed()
    {
        useOpener();
        ModalAnswers answers;
        QString all;
        answers.withDialog([&all](QDialog *dialog) {
            const auto *table = dialog->findChild<QTableWidget *>("tableWidgetLibraries");
            // The last one answers for itself, some time after.
            QVERIFY(QTest::qWaitFor(
                [&] { return table->item(table->rowCount() - 1, 0)->text() == "GDAL"; }));
            for (int row = 0; row < table->rowCount(); ++row)
                for (int column = 0; column < 3; ++column)
                    all += table->item(row, column)->text() + '|';
            dialog->reject();
        });
        action("action_Libraries")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY2(all.contains(QString("Qt|%1|LGPL 3|").arg(qVersion())), qPrintable(all));
        QVERIFY2(all.contains("|libdeflate|1."), qPrintable(all));
        QVERIFY2(all.contains("|GDAL|3.6.2|MIT|"), qPrintable(all));
        QVERIFY2(!all.contains("||"), qPrintable(all));
    }

private:
    void useOpener() { m_window->setTerrainOpener(std::make_unique<Opener>(m_heard)); }
    QString picture(const QString &name)
    {
        QImage image(8, 6, QImage::Format_RGB32);
        image.fill(Qt::green);
        return saveImageFile(image, m_dir->filePath(name)) ? m_dir->filePath(name) : "";
    }
    QString sixteenBits(const QString &name)
    {
        QImage image(8, 6, QImage::Format_Grayscale16);
        image.fill(Qt::gray);
        return image.save(m_dir->filePath(name)) ? m_dir->filePath(name) : "";
    }
    QString elevation(const QString &name)
    {
        ElevationImage image(80, 60, QImage::Format_RGB888);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 80; ++x)
                image.setElevation(x, y, x * y);
        return saveImageFile(image, m_dir->filePath(name)) ? m_dir->filePath(name) : "";
    }
    QString touch(const QString &name) { return written(name, "?"); }
    QString scenery(const QString &name, const QByteArray &lines)
    {
        return written(name, "[Param]\n" + lines);
    }
    QString written(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_dir->filePath(name));
        return file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size()
                   ? file.fileName()
                   : QString();
    }
    // Whether the window takes it.
    bool drop(const QMimeData *data)
    {
        const auto copy = Qt::CopyAction;
        QDragEnterEvent enter({50, 50}, copy, data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(m_window.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped({50, 50}, copy, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &dropped);
        return dropped.isAccepted();
    }
    [[nodiscard]] QStringList titles() const
    {
        QStringList found;
        for (const QMdiSubWindow *window :
             m_window->findChild<QMdiArea *>()->subWindowList())
            if (window->widget())
                found << window->widget()->windowTitle();
        return found;
    }
    [[nodiscard]] QString notice() const { return noticeLabel()->notice(); }

    QStringList m_heard;
};

QTEST_MAIN(TestMainWindowFiles)
#include "test_mainwindow_files.moc"
