// The form, driven by its widgets.

#include "document/scenerydelegate.h"
#include "document/sceneryviewfixture.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scene/scenerydata.h"
#include "support/modalanswer.h"

#include <QColorDialog>
#include <QTest>

class TestSceneryMdiChild : public QObject, private SceneryViewFixture {
    Q_OBJECT

private slots:
    void init() { openView(); }
    void cleanup() { closeView(); }
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
    void clipboardIsNotUsed();
};

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

void TestSceneryMdiChild::clipboardIsNotUsed()
{
    QVERIFY(!m_view->copy());
    QVERIFY(!m_view->paste());
}

QTEST_MAIN(TestSceneryMdiChild)
#include "test_scenerymdichild.moc"
