#include "support/factsof.h"
#include "tooldialogs/changeblue0pixelsdialog.h"
#include "tooldialogs/elevationtocolordialog.h"
#include "tooldialogs/elevationtograydialog.h"
#include "tooldialogs/graytoelevationdialog.h"

#include "raster/elevationimage.h"
#include "tooldialogs/dialogtest.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSpinBox>

class TestConversionDialogs : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void init() { settings().clear(); }
    void okWaitsForBothFiles();
    void graysWithinRangeAreSavedWithoutAQuestion();
    void graysBeyondRangeAreNormalizedOnDemand_data();
    void graysBeyondRangeAreNormalizedOnDemand();
    void anInputThatVanishesBehindTheQuestionIsTold();
    void failuresLeaveTheDialogOpenAndWriteNothing();
    void anInputMayBeTheOutput();
    void sumsAreTold();
    void blueZeroIsReplaced();
    void theRangeOfTheInputIsProposed();
    void ignoringZerosLooksAgain();
    void aFileThatIsNoImageIsNotTaken();
    void thePaletteIsShownAsItIsUsed();
    void aBadPaletteLeavesTheFormerOneInUse();
    void coloursAreSavedAsJpegToo();
};

namespace {

// Elevations in a row: 0, 100, 256.
QImage heights() { return images::row({0xFF000000, 0xFF000064, 0xFF000100}); }

QRgb gray(int v) { return qRgb(v, v, v); }

} // namespace

void TestConversionDialogs::okWaitsForBothFiles()
{
    GrayToElevationDialog dialog;
    dialog.show();
    QVERIFY(!okEnabled(dialog));
    chooseOutput(dialog, path("wait.png"));
    QVERIFY(!okEnabled(dialog));
    chooseInput(dialog, file("wait-in.png", heights()));
    QVERIFY(okEnabled(dialog));
    QCOMPARE(settings().value("MRUDirectory").toString(), path(QString()));
    click(dialog, "pushButtonCancel");
    QVERIFY(!dialog.isVisible());
    QVERIFY(!QFile::exists(path("wait.png")));
    VERIFY_ANSWERS();
}

void TestConversionDialogs::graysWithinRangeAreSavedWithoutAQuestion()
{
    ElevationToGrayDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", heights()));
    chooseOutput(dialog, path("gray.png"));
    find<QDoubleSpinBox>(dialog, "doubleSpinBoxZScale")->setValue(0.5);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    const QImage out(path("gray.png"));
    QCOMPARE(out.pixel(1, 0), gray(50));
    QCOMPARE(out.pixel(2, 0), gray(128));
}

void TestConversionDialogs::graysBeyondRangeAreNormalizedOnDemand_data()
{
    QTest::addColumn<bool>("normalize");
    QTest::addColumn<int>("middle");
    QTest::newRow("no") << false << 100;
    QTest::newRow("yes") << true << 101; // (100 + 1) / 256 * 255 = 100.6
}

void TestConversionDialogs::graysBeyondRangeAreNormalizedOnDemand()
{
    QFETCH(bool, normalize);
    QFETCH(int, middle);
    ElevationToGrayDialog dialog;
    dialog.show();
    chooseInput(dialog,
                file("in.png", images::row({0xFFFFFFFF, 0xFF000064, 0xFF0000FF})));
    const QString output = path(normalize ? "yes.png" : "no.png");
    chooseOutput(dialog, output);
    answers.pressButton("Convert Elevation File Into Grayscale File",
                        "Conversion finished.\nThere were 1 pixels below 0\nand 0 pixels "
                        "above 255.\nNormalization would require a z scale of 1.00.\n"
                        "Normalize?",
                        normalize ? QMessageBox::Yes : QMessageBox::No);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    const QImage out(output);
    QCOMPARE(factsOf(dialog.outcome()), QString(normalize ? "" : "Values cut 1"));
    QCOMPARE(out.pixel(0, 0), gray(0));
    QCOMPARE(out.pixel(1, 0), gray(middle));
    QCOMPARE(out.pixel(2, 0), gray(255));
}

void TestConversionDialogs::anInputThatVanishesBehindTheQuestionIsTold()
{
    ElevationToGrayDialog dialog;
    dialog.show();
    const QString input = file("vanishing.png", heights());
    chooseInput(dialog, input);
    chooseOutput(dialog, path("never.png"));
    answers.withDialog([&input](QDialog *box) {
        QFile::remove(input);
        qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click();
    });
    expectError(couldNotOpen(input));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(path("never.png")));
}

void TestConversionDialogs::failuresLeaveTheDialogOpenAndWriteNothing()
{
    GrayToElevationDialog dialog;
    dialog.show();
    const QString bad = junk("bad.png");
    chooseInput(dialog, bad);
    chooseOutput(dialog, path("out.png"));
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonOK");
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(path("out.png")));

    chooseInput(dialog, file("good.png", heights()));
    const QString nowhere = path("absent/out.png");
    find<QLineEdit>(dialog, "lineEditToFile")->setText(nowhere);
    expectError(couldNotSave(nowhere));
    click(dialog, "pushButtonOK");
    QVERIFY(dialog.isVisible());
    VERIFY_ANSWERS();
}

void TestConversionDialogs::anInputMayBeTheOutput()
{
    ChangeBlue0PixelsDialog dialog;
    dialog.show();
    const QString both = file("both.png", images::row({0xFF102000}));
    chooseInput(dialog, both);
    find<QLineEdit>(dialog, "lineEditToFile")->setText(both);
    find<QPushButton>(dialog, "pushButtonOK")->setEnabled(true);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QCOMPARE(QImage(both).pixel(0, 0), QRgb(0xFF102001));
}

void TestConversionDialogs::sumsAreTold()
{
    GrayToElevationDialog dialog;
    dialog.show();
    chooseInput(dialog, file("gray-in.png", images::row({gray(100), gray(255)})));
    chooseOutput(dialog, path("sums.png"));
    answers.pressButton(
        "Convert Grayscale File Into Elevation File",
        "Conversion finished.\nElevation values between 300 and 765 were "
        "detected.\n\nNote that an elevation value is the sum of the\nred, "
        "green and blue values of a pixel.",
        QMessageBox::Ok);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(QImage(path("sums.png")).pixel(0, 0), QRgb(0xFF00012C));
}

void TestConversionDialogs::blueZeroIsReplaced()
{
    ChangeBlue0PixelsDialog dialog;
    dialog.show();
    chooseInput(dialog, file("blue.png", images::row({0x00112200, 0x80112201})));
    chooseOutput(dialog, path("blue-out.png"));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    const QImage out(path("blue-out.png"));
    QCOMPARE(out.pixel(0, 0),
             QRgb(0xFF000001 | (QImage(path("blue.png")).pixel(0, 0) & 0x00FFFF00)));
    QCOMPARE(out.pixel(1, 0), QRgb(0x80112201));
}

void TestConversionDialogs::theRangeOfTheInputIsProposed()
{
    ElevationToColorDialog dialog;
    dialog.show();
    find<QSpinBox>(dialog, "spinBoxElevationLower")->setValue(77);
    chooseInput(dialog, file("range.png", images::row({0xFFFFFF9C, 0xFF000100})));
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationRangeLower")->value(), -100);
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationRangeUpper")->value(), 256);
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationLower")->value(), -100);
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationUpper")->value(), 256);
    VERIFY_ANSWERS();
}

void TestConversionDialogs::ignoringZerosLooksAgain()
{
    ElevationToColorDialog dialog;
    dialog.show();
    click(dialog, "checkBoxIgnoreZeroValues"); // no file: no effect and no box
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationRangeLower")->value(), 0);
    chooseInput(dialog, file("some.png", heights()));
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationLower")->value(), 100);
    click(dialog, "checkBoxIgnoreZeroValues");
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationLower")->value(), 0);
    click(dialog, "checkBoxIgnoreZeroValues");
    chooseInput(dialog, file("zero.png", images::row({0xFF000000})));
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationRangeLower")->value(), 8388607);
    QCOMPARE(find<QSpinBox>(dialog, "spinBoxElevationRangeUpper")->value(), 0);
    VERIFY_ANSWERS();
}

void TestConversionDialogs::aFileThatIsNoImageIsNotTaken()
{
    ElevationToColorDialog dialog;
    dialog.show();
    const QString bad = junk("junk.png");
    answers.chooseFile("Open File", bad);
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonBrowseFromFile");
    QCOMPARE(text(dialog, "lineEditFromFile"), QString());
    QVERIFY(!settings().contains("MRUDirectory"));
    VERIFY_ANSWERS();
}

void TestConversionDialogs::thePaletteIsShownAsItIsUsed()
{
    ElevationToColorDialog dialog;
    dialog.show();
    QImage palette = images::plain(2, 9, qRgb(255, 0, 0));
    palette.setPixel(0, 0, qRgb(0, 0, 255));
    palette.setPixel(1, 0, qRgb(0, 255, 0));
    choose(dialog, "pushButtonBrowsePaletteFile", "Open File",
           file("palette.png", palette));
    const auto *label = find<QLabel>(dialog, "labelPalette");
    const QImage shown = label->pixmap().toImage();
    QCOMPARE(shown.deviceIndependentSize().toSize(), label->size());
    QCOMPARE(shown.pixel(0, shown.height() - 1), qRgb(0, 0, 255));
    QCOMPARE(shown.pixel(shown.width() - 1, shown.height() / 2), qRgb(0, 255, 0));
    dialog.resize(dialog.width() + 100, dialog.height() + 50);
    QTRY_COMPARE(label->pixmap().deviceIndependentSize().toSize(), label->size());
    VERIFY_ANSWERS();
}

void TestConversionDialogs::aBadPaletteLeavesTheFormerOneInUse()
{
    ElevationToColorDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", heights()));
    chooseOutput(dialog, path("colour.png"));
    const QString good = file("good.png", images::row({gray(1), gray(2)}));
    choose(dialog, "pushButtonBrowsePaletteFile", "Open File", good);
    QVERIFY(okEnabled(dialog));
    const QString bad = junk("bad-palette.png");
    answers.chooseFile("Open File", bad);
    expectError(couldNotOpen(bad), "Convert Elevation File Into Color File");
    click(dialog, "pushButtonBrowsePaletteFile");
    QCOMPARE(text(dialog, "lineEditPaletteFile"), good);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    const QImage out(path("colour.png"));
    QCOMPARE(out.pixel(0, 0), gray(1));
    QCOMPARE(out.pixel(2, 0), gray(2));
}

void TestConversionDialogs::coloursAreSavedAsJpegToo()
{
    ElevationToColorDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", heights()));
    answers.chooseFile("Save File", path("colour.jpg"),
                       "Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif)");
    click(dialog, "pushButtonBrowseToFile");
    choose(dialog, "pushButtonBrowsePaletteFile", "Open File",
           file("one.png", images::row({gray(90)})));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(qAbs(qRed(QImage(path("colour.jpg")).pixel(1, 0)) - 90) <= 3);
}

QTEST_MAIN(TestConversionDialogs)
#include "test_conversiondialogs.moc"
