#include "tooldialogs/convolutiondialog.h"
#include "tooldialogs/maskdialog.h"
#include "tooldialogs/mergedialog.h"

#include "tooldialogs/dialogtest.h"

#include <QDoubleSpinBox>
#include <QRadioButton>

namespace {

QRgb gray(int v) { return qRgb(v, v, v); }

QImage grays(int v) { return images::plain(4, 3, gray(v)); }

} // namespace

class TestFilterDialogs : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void init() { settings().clear(); }
    void mergeAddsWithTheBiasesOfTheForm();
    void mergeMultipliesOnDemand();
    void mergeTellsWhichFileIsNoImage();
    void mergeTellsThatTheOutputCannotBeWritten();
    void aMaskIsChosenInAWindowCalledSaveFile();
    void maskTellsWhichFileIsNoImage();
    void convolutionFilters();
    void aKernelIsTestedWhenItIsChosen();
    void aKernelIsTestedOnceMoreWhenItIsUsed();
    void the16384thPixelOfAKernelFits();
};

void TestFilterDialogs::mergeAddsWithTheBiasesOfTheForm()
{
    MergeDialog dialog;
    dialog.show();
    choose(dialog, "pushButtonBrowseFile1", "Open File", file("1.png", grays(200)));
    choose(dialog, "pushButtonBrowseFile2", "Open File", file("2.png", grays(100)));
    QVERIFY(!okEnabled(dialog));
    choose(dialog, "pushButtonBrowseToFile", "Save File", path("sum.png"));
    find<QDoubleSpinBox>(dialog, "doubleSpinBoxBias1")->setValue(1.0);
    find<QDoubleSpinBox>(dialog, "doubleSpinBoxBias2")->setValue(1.0);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(QImage(path("sum.png")).pixel(3, 2), gray(44)); // 300 - 256
}

void TestFilterDialogs::mergeMultipliesOnDemand()
{
    MergeDialog dialog;
    dialog.show();
    choose(dialog, "pushButtonBrowseFile1", "Open File", file("1.png", grays(100)));
    choose(dialog, "pushButtonBrowseFile2", "Open File", file("2.png", grays(51)));
    choose(dialog, "pushButtonBrowseToFile", "Save File", path("product.png"));
    click(dialog, "radioButtonMultiply");
    QVERIFY(!find<QRadioButton>(dialog, "radioButtonAdd")->isChecked());
    find<QDoubleSpinBox>(dialog, "doubleSpinBoxBias1")->setValue(0.0);
    find<QDoubleSpinBox>(dialog, "doubleSpinBoxBias2")->setValue(-1.0);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QCOMPARE(QImage(path("product.png")).pixel(0, 0), gray(19)); // 50 * 100 / 255
}

void TestFilterDialogs::mergeTellsWhichFileIsNoImage()
{
    MergeDialog dialog;
    dialog.show();
    const QString good = file("good.png", grays(1));
    const QString bad = junk("bad.png");
    choose(dialog, "pushButtonBrowseFile1", "Open File", good);
    choose(dialog, "pushButtonBrowseFile2", "Open File", bad);
    choose(dialog, "pushButtonBrowseToFile", "Save File", path("none.png"));
    const QString complaint =
        QStringLiteral("Could not load image file \"%1\".").arg(bad);
    expectError(complaint);
    click(dialog, "pushButtonOK");
    choose(dialog, "pushButtonBrowseFile1", "Open File", bad);
    choose(dialog, "pushButtonBrowseFile2", "Open File", good);
    expectError(complaint);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(path("none.png")));
}

void TestFilterDialogs::mergeTellsThatTheOutputCannotBeWritten()
{
    MergeDialog dialog;
    dialog.show();
    choose(dialog, "pushButtonBrowseFile1", "Open File", file("1.png", grays(1)));
    choose(dialog, "pushButtonBrowseFile2", "Open File", file("2.png", grays(2)));
    choose(dialog, "pushButtonBrowseToFile", "Save File", path("x.png"));
    const QString nowhere = path("absent/x.png");
    find<QLineEdit>(dialog, "lineEditToFile")->setText(nowhere);
    expectError(QStringLiteral("Could not save image file \"%1\".").arg(nowhere));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
}

void TestFilterDialogs::aMaskIsChosenInAWindowCalledSaveFile()
{
    MaskDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", grays(0)));
    chooseOutput(dialog, path("masked.png"));
    QVERIFY(!okEnabled(dialog));
    choose(dialog, "pushButtonBrowseMaskFile", "Save File",
           file("mask.png", images::plain(4, 3, qRgba(255, 255, 255, 128))));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(QImage(path("masked.png")).pixel(2, 1), gray(128));
}

void TestFilterDialogs::maskTellsWhichFileIsNoImage()
{
    MaskDialog dialog;
    dialog.show();
    const QString good = file("good.png", grays(1));
    const QString bad = junk("bad.png");
    chooseInput(dialog, good);
    chooseOutput(dialog, path("none.png"));
    choose(dialog, "pushButtonBrowseMaskFile", "Save File", bad);
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonOK");
    chooseInput(dialog, bad);
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(path("none.png")));
}

void TestFilterDialogs::convolutionFilters()
{
    ConvolutionDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", images::noise(5, 4)));
    chooseOutput(dialog, path("filtered.png"));
    QVERIFY(!okEnabled(dialog));
    choose(dialog, "pushButtonBrowseKernelFile", "Save File",
           file("kernel.png", images::plain(1, 1, gray(200))));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(QImage(path("filtered.png")).pixel(4, 3), images::noise(5, 4).pixel(4, 3));
}

void TestFilterDialogs::aKernelIsTestedWhenItIsChosen()
{
    ConvolutionDialog dialog;
    dialog.show();
    const QString bad = junk("bad.png");
    answers.chooseFile("Save File", bad);
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonBrowseKernelFile");
    const QString large = file("large.png", images::plain(129, 128, gray(200)));
    answers.chooseFile("Save File", large);
    expectError(QStringLiteral("The kernel file \"%1\" is too large.\nAllowed overall "
                               "number of pixels (width x heidth): 16384.")
                    .arg(large));
    click(dialog, "pushButtonBrowseKernelFile");
    QCOMPARE(text(dialog, "lineEditKernelFile"), QString());
    VERIFY_ANSWERS();
}

void TestFilterDialogs::aKernelIsTestedOnceMoreWhenItIsUsed()
{
    ConvolutionDialog dialog;
    dialog.show();
    const QString kernel = file("kernel.png", images::plain(1, 1, gray(200)));
    chooseInput(dialog, file("in.png", grays(9)));
    chooseOutput(dialog, path("out.png"));
    choose(dialog, "pushButtonBrowseKernelFile", "Save File", kernel);
    QVERIFY(!file("kernel.png", images::plain(16385, 1, gray(200))).isEmpty());
    expectError(QStringLiteral("The kernel file \"%1\" is too large.\nAllowed overall "
                               "number of pixels (width x heidth): 16384.")
                    .arg(kernel));
    click(dialog, "pushButtonOK");
    QVERIFY(QFile::remove(kernel));
    expectError(couldNotOpen(kernel));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(path("out.png")));
}

void TestFilterDialogs::the16384thPixelOfAKernelFits()
{
    ConvolutionDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", grays(9)));
    chooseOutput(dialog, path("boxes.png"));
    choose(dialog, "pushButtonBrowseKernelFile", "Save File",
           file("column.png", images::plain(1, 16384, gray(200))));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QCOMPARE(QImage(path("boxes.png")).pixel(0, 0), gray(9));
}

QTEST_MAIN(TestFilterDialogs)
#include "test_filterdialogs.moc"
