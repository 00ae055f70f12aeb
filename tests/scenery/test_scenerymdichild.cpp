// The form, driven by its widgets.

#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scenery/scenerydata.h"
#include "scenery/scenerydelegate.h"
#include "scenery/scenerymdichild.h"
#include "shell/imagemdichild.h"
#include "support/modalanswer.h"
#include "ui_scenerymdichildform.h"

#include <QAction>
#include <QColorDialog>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

class TestSceneryMdiChild : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void newDocumentsAreNumbered();
    void everyEditMakesTheDocumentModified();
    void lastOutputFormatCannotBeCleared();
    void flightPathButtonFollowsTheMode();
    void fixTakesTheRatioOfTheSizes();
    void repositionStandsSouthOfTheTerrain();
    void repositionWithoutTextureDoesNothing();
    void repositionWithABadElevationLeavesItsScale();
    void repositionOverFlatGroundTakesTheLargestScale();
    void firstFrameGoesToTheLastAndBack();
    void browsingFillsTheNames();
    void outputNameNeedsANumber();
    void colourIsChosenAndShown();
    void failedLoadIsTold();
    void closingAsks_data();
    void closingAsks();
    void failedSaveKeepsTheViewOpen();
    void runShowsItsPictureAndWritesFrames();
    void stoppedRunWritesNothingFurther();
    void viewCannotBeClosedDuringItsRun();
    void failedRunIsTold();
    void curvedRunWithoutPathIsTold();
    void clipboardIsNotUsed();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
    }
    void click(QAbstractButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton, {}, {5, button->height() / 2});
    }
    void writePictures(const QSize &texture, const QSize &elevation);
    void prepareRun();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QAction> m_zoom;
    std::unique_ptr<SceneryMdiChild> m_view;
    Ui_SceneryMdiChildForm *m_form = nullptr;
};

void TestSceneryMdiChild::init()
{
    QSettings("Kolvenar", "Zephrant").clear();
    m_dir = std::make_unique<QTemporaryDir>();
    m_zoom = std::make_unique<QAction>();
    m_view = std::make_unique<SceneryMdiChild>(nullptr, m_zoom.get(), m_zoom.get(),
                                               m_zoom.get(), m_zoom.get());
    m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    m_form = &m_view->form();
    m_view->newFile();
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    QVERIFY(!m_view->isModified());
}

void TestSceneryMdiChild::cleanup()
{
    m_view.reset();
    m_zoom.reset();
    m_dir.reset();
}

void TestSceneryMdiChild::writePictures(const QSize &texture, const QSize &elevation)
{
    QImage colours(texture, QImage::Format_RGB32);
    colours.fill(qRgb(90, 160, 60));
    QVERIFY(saveImageFile(colours, path("t.png")));
    ElevationImage heights(elevation, QImage::Format_RGB888);
    heights.clear(0xFF000000);
    heights.setElevation(1, 1, 500);
    heights.setElevation(2, 2, -100);
    QVERIFY(saveImageFile(heights, path("e.png")));
    m_form->lineEditTextureFile->setText(path("t.png"));
    m_form->lineEditElevationFile->setText(path("e.png"));
}

void TestSceneryMdiChild::prepareRun()
{
    writePictures({40, 30}, {40, 30});
    m_form->lineEditOutputFiles->setText(path("f%02d"));
    m_form->spinBoxSizeX->setValue(32);
    m_form->spinBoxSizeY->setValue(24);
    m_form->spinBoxFrameNumberTotal->setValue(3);
    m_form->spinBoxFrameNumberTo->setValue(2);
    click(m_form->pushButtonFromReposition);
    click(m_form->pushButtonToReposition);
}

void TestSceneryMdiChild::newDocumentsAreNumbered()
{
    const QString first = m_view->currentFile();
    QVERIFY(first.startsWith("document") && first.endsWith(".zph"));
    QCOMPARE(m_view->windowTitle(), first + "[*]");
    m_view->newFile();
    const auto number = [](const QString &name) {
        return name.mid(8, name.size() - 12).toInt();
    };
    QCOMPARE(number(m_view->currentFile()), number(first) + 1);
}

void TestSceneryMdiChild::everyEditMakesTheDocumentModified()
{
    SceneryDelegate &delegate = m_view->delegate();
    QStringList silent;
    const auto check = [&](QWidget *widget) {
        if (!delegate.isModified())
            silent << widget->objectName();
        delegate.setModified(false);
    };
    for (QSpinBox *box : m_view->findChildren<QSpinBox *>()) {
        box->setFocus();
        QTest::keyClick(box, box->value() < box->maximum() ? Qt::Key_Up : Qt::Key_Down);
        check(box);
    }
    for (QDoubleSpinBox *box : m_view->findChildren<QDoubleSpinBox *>()) {
        box->setFocus();
        QTest::keyClick(box, box->value() < box->maximum() ? Qt::Key_Up : Qt::Key_Down);
        check(box);
    }
    for (QLineEdit *edit : {m_form->lineEditOutputFiles, m_form->lineEditTextureFile,
                            m_form->lineEditElevationFile}) {
        QTest::keyClicks(edit, "a");
        check(edit);
    }
    for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{
             m_form->checkBoxTGA, m_form->checkBoxPNG, m_form->checkBoxJPG,
             m_form->checkBoxPPM, m_form->checkBoxUseTextureFile, m_form->radioButtonHQ,
             m_form->radioButtonXHQ, m_form->radioButtonLQ,
             m_form->checkBoxBackgroundColor, m_form->checkBoxRecorder,
             m_form->radioButtonCurve, m_form->radioButtonStraight}) {
        click(button);
        check(button);
    }
    QCOMPARE(silent, QStringList());
}

void TestSceneryMdiChild::lastOutputFormatCannotBeCleared()
{
    click(m_form->checkBoxTGA);
    click(m_form->checkBoxPNG);
    QVERIFY(!m_form->checkBoxPNG->isChecked());
    QVERIFY(m_form->checkBoxTGA->isChecked() && !m_form->checkBoxTGA->isEnabled());
    QVERIFY(m_form->checkBoxPNG->isEnabled());
    click(m_form->checkBoxJPG);
    QVERIFY(m_form->checkBoxTGA->isEnabled() && m_form->checkBoxJPG->isEnabled());
}

void TestSceneryMdiChild::flightPathButtonFollowsTheMode()
{
    click(m_form->radioButtonCurve);
    QVERIFY(m_form->pushButtonSetFlightPath->isEnabled());
    click(m_form->radioButtonStraight);
    QVERIFY(!m_form->pushButtonSetFlightPath->isEnabled());
}

void TestSceneryMdiChild::fixTakesTheRatioOfTheSizes()
{
    writePictures({40, 30}, {20, 15});
    click(m_form->pushButtonFixScale);
    QCOMPARE(m_form->doubleSpinBoxElevScaleX->value(), 2.0);
    QCOMPARE(m_form->doubleSpinBoxElevScaleY->value(), 2.0);
    QVERIFY(m_view->isModified());
}

void TestSceneryMdiChild::repositionStandsSouthOfTheTerrain()
{
    writePictures({400, 300}, {30, 20});
    m_form->doubleSpinBoxCameraFromRoll->setValue(9);
    click(m_form->pushButtonFromReposition);
    QCOMPARE(m_form->doubleSpinBoxCameraFromX->value(), 200.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromY->value(), -300.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromZ->value(), 450.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromHeading->value(), 0.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromPitch->value(), -45.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromFocalLength->value(), 1000.0);
    QCOMPARE(m_form->doubleSpinBoxCameraFromRoll->value(), 0.0);
    // (20 + 30) / (20 * (500 + 100)) = 0.0041667
    QCOMPARE(m_form->doubleSpinBoxCameraFromElevZScale->value(), 0.004167);
    QCOMPARE(m_form->doubleSpinBoxCameraToZ->value(), 500.0); // the last frame stays
    QCOMPARE(m_view->cursor().shape(), Qt::ArrowCursor);
}

void TestSceneryMdiChild::repositionWithoutTextureDoesNothing()
{
    click(m_form->pushButtonToReposition);
    QCOMPARE(m_form->doubleSpinBoxCameraToPitch->value(), -10.0);
    QVERIFY(!m_view->isModified());
    QCOMPARE(m_view->cursor().shape(), Qt::ArrowCursor);
}

void TestSceneryMdiChild::repositionWithABadElevationLeavesItsScale()
{
    writePictures({400, 300}, {30, 20});
    m_form->lineEditElevationFile->setText(path("none.png"));
    click(m_form->pushButtonToReposition);
    QCOMPARE(m_form->doubleSpinBoxCameraToX->value(), 200.0);
    QCOMPARE(m_form->doubleSpinBoxCameraToElevZScale->value(), 0.001);
}

void TestSceneryMdiChild::repositionOverFlatGroundTakesTheLargestScale()
{
    writePictures({4, 3}, {5, 5});
    ElevationImage flat(5, 5, QImage::Format_RGB888);
    flat.clear(0xFF000007);
    QVERIFY(saveImageFile(flat, path("e.png")));
    click(m_form->pushButtonFromReposition);
    QCOMPARE(m_form->doubleSpinBoxCameraFromElevZScale->value(), 10000.0);
}

void TestSceneryMdiChild::firstFrameGoesToTheLastAndBack()
{
    m_form->doubleSpinBoxCameraFromX->setValue(12);
    m_form->doubleSpinBoxCameraFromDust->setValue(2);
    m_view->delegate().setModified(false);
    m_view->copyFirstLast();
    QCOMPARE(m_form->doubleSpinBoxCameraToX->value(), 12.0);
    QCOMPARE(m_form->doubleSpinBoxCameraToDust->value(), 2.0);
    QVERIFY(m_view->isModified());
    m_form->doubleSpinBoxCameraToRoll->setValue(-30);
    m_view->copyLastFirst();
    QCOMPARE(m_form->doubleSpinBoxCameraFromRoll->value(), -30.0);
}

void TestSceneryMdiChild::browsingFillsTheNames()
{
    writePictures({4, 3}, {4, 3});
    m_form->lineEditTextureFile->clear();
    m_form->lineEditElevationFile->clear();
    ModalAnswers answers;
    answers.chooseFile("Texture File", path("t.png"));
    answers.chooseFile("Elevation File", path("e.png"));
    answers.cancelFile("Texture File");
    click(m_form->pushButtonBrowseTextureFile);
    click(m_form->pushButtonBrowseElevationFile);
    m_view->delegate().setModified(false);
    click(m_form->pushButtonBrowseTextureFile);
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(m_form->lineEditTextureFile->text(), path("t.png"));
    QCOMPARE(m_form->lineEditElevationFile->text(), path("e.png"));
    QVERIFY(!m_view->isModified()); // cancelled
}

void TestSceneryMdiChild::outputNameNeedsANumber()
{
    const QString warning = "The output file must contain a C-style format string\nfor a "
                            "signed decimal integer: %d or %03d or similar.";
    ModalAnswers answers;
    answers.chooseFile("Output File", path("image.png"));
    answers.pressButton("Output File", warning, QMessageBox::Ok);
    answers.chooseFile("Output File", path("image%04d.png"));
    click(m_form->pushButtonBrowseOutputFiles);
    QCOMPARE(m_form->lineEditOutputFiles->text(), path("image%04d"));

    answers.chooseFile("Output File", path("image%s.png"));
    answers.pressButton("Output File", warning, QMessageBox::Ok);
    answers.cancelFile("Output File");
    click(m_form->pushButtonBrowseOutputFiles);
    QCOMPARE(m_form->lineEditOutputFiles->text(), path("image%04d"));
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChild::colourIsChosenAndShown()
{
    ModalAnswers answers;
    answers.withDialog([](QDialog *dialog) {
        auto *const colours = qobject_cast<QColorDialog *>(dialog);
        QVERIFY(colours);
        colours->setCurrentColor(QColor(255, 128, 1));
        colours->accept();
    });
    click(m_form->pushButtonBackgroundColor);
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(m_form->lineEditBackgroundColor->text(), QString("0180ff"));
    const QPalette palette = m_form->lineEditBackgroundColor->palette();
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Base), QColor(255, 128, 1));
    QCOMPARE(palette.color(QPalette::Inactive, QPalette::Text), QColor(255, 128, 1));
    m_view->delegate().viewToData();
    QCOMPARE(m_view->delegate().sceneryData().Hintergrund, 0xFFFF8001u);
}

void TestSceneryMdiChild::failedLoadIsTold()
{
    QFile file(path("a.zph"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Bogus=1\n") == 8);
    file.close();
    ModalAnswers answers;
    answers.pressButton(
        "Error",
        QString("Cannot open file \"%1\":\nNo such key: Bogus=1.").arg(path("a.zph")),
        QMessageBox::Ok);
    QVERIFY(!m_view->loadFile(path("a.zph")));
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(!QApplication::overrideCursor());
}

void TestSceneryMdiChild::closingAsks_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closed");
    QTest::newRow("no") << int(QMessageBox::No) << true;
    QTest::newRow("cancel") << int(QMessageBox::Cancel) << false;
}
void TestSceneryMdiChild::closingAsks()
{
    QFETCH(int, button);
    QFETCH(bool, closed);
    m_form->spinBoxGridX->setValue(5);
    ModalAnswers answers;
    answers.pressButton("Close File",
                        QString("The file has been modified:\n\"%1\"\nSave the changes?")
                            .arg(m_view->currentFile()),
                        QMessageBox::StandardButton(button));
    QCOMPARE(m_view->close(), closed);
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChild::failedSaveKeepsTheViewOpen()
{
    QVERIFY(m_view->saveFile(path("a.zph")));
    QVERIFY(QFile::remove(path("a.zph")) && QDir().mkdir(path("a.zph")));
    m_form->spinBoxGridX->setValue(5);
    ModalAnswers answers;
    answers.pressButton("Close File",
                        QString("The file has been modified:\n\"%1\"\nSave the changes?")
                            .arg(m_view->currentFile()),
                        QMessageBox::Yes);
    answers.withDialog([this](QDialog *dialog) {
        auto *const box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("Error"));
        QVERIFY(box->text().startsWith(
            QString("Cannot save file \"%1\":\n").arg(path("a.zph"))));
        box->button(QMessageBox::Ok)->click();
    });
    QVERIFY(!m_view->close());
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChild::runShowsItsPictureAndWritesFrames()
{
    prepareRun();
    m_form->spinBoxFrameNumberOffset->setValue(4);
    m_form->spinBoxFrameNumberFrom->setValue(1);
    QVERIFY(!m_view->hasChildren());
    m_view->renderFinal();
    QVERIFY(m_view->hasChildren());
    QVERIFY(!QFileInfo::exists(path("f04.png")));
    QCOMPARE(loadImageFile(path("f05.png")).size(), QSize(32, 24));
    QVERIFY(QFileInfo::exists(path("f06.png")));
    auto *const image = m_view->findChild<ImageMdiChild *>();
    QCOMPARE(image->windowTitle(), path("f06"));
    QCOMPARE(image->size(),
             QSize(300, 200)); // the picture fits, the form's minimum holds
    m_view->renderPreview();
    QCOMPARE(loadImageFile(path("f06.png")).size(), QSize(16, 12));
    QCOMPARE(m_view->findChildren<ImageMdiChild *>().size(), 1); // used again
    m_zoom->setEnabled(true);
    delete image;
    QVERIFY(!m_zoom->isEnabled());
}

void TestSceneryMdiChild::stoppedRunWritesNothingFurther()
{
    prepareRun();
    connect(&m_view->delegate(), &SceneryDelegate::frameStarted, this, [this](int frame) {
        if (frame == 1)
            m_view->stopRendering();
    });
    m_view->renderFinal();
    QVERIFY(QFileInfo::exists(path("f00.png")));
    QVERIFY(!QFileInfo::exists(path("f01.png")));
    QVERIFY(!m_view->isRendering());
}

void TestSceneryMdiChild::viewCannotBeClosedDuringItsRun()
{
    prepareRun();
    m_view->delegate().setModified(false);
    bool closed = true;
    bool imageClosed = true;
    QTimer::singleShot(0, this, [&] {
        closed = m_view->close();
        imageClosed = m_view->findChild<ImageMdiChild *>()->close();
    });
    m_view->renderFinal();
    QVERIFY(!closed);
    QVERIFY(!imageClosed);
    QVERIFY(m_view->close());
}

void TestSceneryMdiChild::failedRunIsTold()
{
    prepareRun();
    m_form->lineEditTextureFile->setText("none.png");
    ModalAnswers answers;
    answers.pressButton("Error", "Could not open texture file \"none.png\"",
                        QMessageBox::Ok);
    m_view->renderFinal();
    m_form->lineEditTextureFile->setText(path("t.png"));
    m_form->lineEditElevationFile->setText("none.png");
    answers.pressButton("Error", "Could not open elevation file \"none.png\"",
                        QMessageBox::Ok);
    m_view->renderPreview();
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_view->findChild<ImageMdiChild *>()->isHidden());
    QVERIFY(!m_view->isRendering());
}

void TestSceneryMdiChild::curvedRunWithoutPathIsTold()
{
    prepareRun();
    click(m_form->radioButtonCurve);
    ModalAnswers answers;
    answers.pressButton(
        "SceneryDelegate::CurvedFlight()",
        "The number of control points is 0; it has to be greater than 3.\n",
        QMessageBox::Ok);
    // The reason was told above; the run has no other words for it.
    answers.pressButton("Error", "Unknown error", QMessageBox::Ok);
    m_view->renderFinal();
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChild::clipboardIsNotUsed()
{
    QVERIFY(!m_view->copy());
    QVERIFY(!m_view->paste());
}

QTEST_MAIN(TestSceneryMdiChild)
#include "test_scenerymdichild.moc"
