#include "terrainbatch/toldruns.h"

#include "support/modalanswer.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <cstdlib>

namespace {

using Strings = QStringList;

// Sets a field as "name=value"; a button alone is clicked.
void setField(const QDialog &dialog, const QString &field)
{
    const QString value = field.section('=', 1);
    auto *const widget = dialog.findChild<QWidget *>(field.section('=', 0, 0));
    QVERIFY2(widget, qPrintable(field));
    if (auto *spin = qobject_cast<QSpinBox *>(widget))
        spin->setValue(value.toInt());
    else if (auto *real = qobject_cast<QDoubleSpinBox *>(widget))
        real->setValue(value.toDouble());
    else if (auto *combo = qobject_cast<QComboBox *>(widget))
        combo->setCurrentText(value);
    else if (auto *line = qobject_cast<QLineEdit *>(widget))
        line->setText(value);
    else if (auto *button = qobject_cast<QAbstractButton *>(widget))
        button->click();
}

// Presses a button of a box; other windows are accepted.
void answerBox(QDialog *dialog, bool yes)
{
    auto *const box = qobject_cast<QMessageBox *>(dialog);
    if (!box)
        return dialog->accept();
    const auto no = yes ? QMessageBox::Yes : QMessageBox::No;
    QAbstractButton *const button =
        box->button(no) ? box->button(no) : box->button(QMessageBox::Ok);
    button->click();
}

void click(const QDialog &dialog, const QString &name)
{
    QTest::mouseClick(dialog.findChild<QPushButton *>(name), Qt::LeftButton);
}

void row(const char *name, const QString &action, const Strings &files,
         const Strings &before, const Strings &after, const QString &boxes,
         const Strings &arguments)
{
    QTest::newRow(name) << action << files << before << after << boxes << arguments;
}

void importRows()
{
    const QString usgs = "action_UsgsDEMConversionDialog";
    const QString several = "Select one or more files to open|FromFile|";
    row("usgs-dem", usgs, {several + "west.dem+east.dem"}, {}, {}, "yy",
        {"usgs-dem", "west.dem", "east.dem"});
    row("usgs-dem with a void", usgs, {several + "west.dem"}, {"spinBoxVoidValue=3"}, {},
        "yn", {"usgs-dem", "--void-value", "3", "west.dem"});
    row("usgs-dem that jumps", usgs, {several + "jumps.dem"}, {}, {}, "yn",
        {"usgs-dem", "jumps.dem"});
    row("usgs-dem that jumps on", usgs, {several + "jumps.dem"}, {}, {}, "yyyyy",
        {"usgs-dem", "--continue-checking", "jumps.dem"});
    const QString bin = "action_BinConversionDialog";
    const Strings raster{"Open File|FromFile|raster.bil",
                         "Open File|HeaderFile|raster.hdr"};
    row("binary-dem", bin, raster, {}, {}, "y",
        {"binary-dem", "--header-file", "raster.hdr", "raster.bil"});
    row("binary-dem in part", bin, raster, {},
        {"doubleSpinBoxUpperLeftCornerX=1.5", "doubleSpinBoxExtentX=1",
         "doubleSpinBoxExtentY=1.00000001", "doubleSpinBoxZScale=-2.5",
         "checkBoxKeepNODATAValues"},
        "y",
        {"binary-dem", "--header-file", "raster.hdr", "--upper-left-corner-x=1.5",
         "--extent-x", "1", "--extent-y", "1.00000001", "--z-scale", "-2.5",
         "--keep-nodata-values", "raster.bil"});
    const QString japan = "action_JapanConversionDialog";
    row("japan-dem", japan, {"Open File|FromFile|sheet.mem"}, {}, {}, "y",
        {"japan-dem", "sheet.mem"});
    row("japan-dem with a void", japan, {"Open File|FromFile|sheet.mem"},
        {"spinBoxVoidValue=12"}, {}, "y",
        {"japan-dem", "--void-value", "12", "sheet.mem"});
    const QString sdts = "action_SdtsConversionDialog";
    const Strings catalog{"Open File|FromCATDFile|TR01CATD.DDF"};
    row("sdts", sdts, catalog, {}, {}, "", {"sdts", "TR01CATD.DDF"});
    row("sdts in feet", sdts, catalog, {}, {"comboBoxOutputUnits=feet"}, "",
        {"sdts", "--output-units", "feet", "TR01CATD.DDF"});
}

void gridRows()
{
    const QString regular = "action_AsciiRegularDialog";
    const Strings grid{"Open File|FromFile|grid.txt"};
    row("ascii-regular", regular, grid, {}, {}, "", {"ascii-regular", "grid.txt"});
    row("ascii-regular with a head", regular, grid, {"spinBoxSkip=1"},
        {"spinBoxWidth=20", "doubleSpinBoxZScale=0.75"}, "",
        {"ascii-regular", "--skip", "1", "--width", "20", "--z-scale", "0.75",
         "grid.txt"});
    const QString irregular = "action_AsciiIrregularDialog";
    row("ascii-irregular", irregular, {"Open File|FromFile|points.txt"}, {}, {}, "",
        {"ascii-irregular", "points.txt"});
    row("ascii-irregular of some points", irregular, {"Open File|FromFile|points.txt"},
        {"spinBoxSkip=2"},
        {"spinBoxWidth=40", "spinBoxHeight=30", "doubleSpinBoxZScale=3",
         "spinBoxNodalPointEstimate=40"},
        "",
        {"ascii-irregular", "--skip", "2", "--width", "40", "--height", "30", "--z-scale",
         "3", "--nodal-point-estimate", "40", "points.txt"});
}

void conversionRows()
{
    const QString dem = "Open File|FromFile|dem.png";
    const QString color = "action_ElevationToColorDialog";
    const Strings two{dem, "Open File|PaletteFile|palette.png"};
    const Strings colors{"elevation-to-color", "--palette-file", "palette.png"};
    row("elevation-to-color", color, two, {}, {}, "", colors + Strings{"dem.png"});
    row("elevation-to-color without zeros", color, two, {}, {"checkBoxIgnoreZeroValues"},
        "", colors + Strings{"--ignore-zero-values", "dem.png"});
    row("elevation-to-color from a height", color, two, {}, {"spinBoxElevationLower=50"},
        "", colors + Strings{"--elevation-lower", "50", "dem.png"});
    const QString gray = "action_ElevationToGrayDialog";
    row("elevation-to-gray", gray, {dem}, {}, {}, "n", {"elevation-to-gray", "dem.png"});
    row("elevation-to-gray normalized", gray, {dem}, {"doubleSpinBoxZScale=1.5"}, {}, "y",
        {"elevation-to-gray", "--normalize", "--z-scale", "1.5", "dem.png"});
    row("gray-to-elevation", "action_GrayToElevationDialog",
        {"Open File|FromFile|photo.png"}, {}, {}, "y",
        {"gray-to-elevation", "photo.png"});
    row("change-blue-0", "action_ChangeBlue0PixelsDialog", {dem}, {}, {}, "",
        {"change-blue-0", "dem.png"});
}

void filterRows()
{
    const QString photo = "Open File|FromFile|photo.png";
    row("convolution", "action_ConvolutionDialog",
        {photo, "Save File|KernelFile|kernel.png"}, {}, {}, "",
        {"convolution", "photo.png", "--kernel-file", "kernel.png"});
    row("mask", "action_MaskDialog", {photo, "Save File|MaskFile|mask.png"}, {}, {}, "",
        {"mask", "photo.png", "--mask-file=mask.png"});
    const QString merge = "action_MergeDialog";
    const Strings files{"Open File|File1|photo.png", "Open File|File2|kernel.png"};
    row("merge", merge, files, {}, {}, "", {"merge", "photo.png", "kernel.png"});
    row("merge multiplied", merge, files,
        {"radioButtonMultiply", "doubleSpinBoxBias1=-3.25", "doubleSpinBoxBias2=90"}, {},
        "",
        {"merge", "--multiply", "--bias1", "-3.25", "--bias2", "90", "photo.png",
         "kernel.png"});
    row("rectify", "action_RectifyDialog", {photo}, {}, {}, "", {"rectify", "photo.png"});
    row("rectify by corners", "action_RectifyDialog", {photo},
        {"lineEditX1=1", "lineEditY1=2", "lineEditX1_=3", "lineEditY1_=-4",
         "lineEditX3_=9", "lineEditY4=11"},
        {}, "",
        {"rectify", "--corner1", "1,2,3,-4", "--corner3", "0,0,9,0", "--corner4",
         "0,11,0,0", "photo.png"});
}

void resampleRows()
{
    const QString resample = "action_ResampleDialog";
    const QString dem = "Open File|FromFile|dem.png";
    const auto size = [&](const char *name, const Strings &fields,
                          const Strings &options) {
        row(name, resample, {dem}, {}, fields, "",
            Strings{"resample"} + options + Strings{"dem.png"});
    };
    size("resample", {}, {});
    size("resample by a percentage", {"doubleSpinBoxPercentX=61.37"},
         {"--percent-x", "61.37"});
    size("resample by the other", {"doubleSpinBoxPercentY=133.33"},
         {"--percent-y", "133.33"});
    size("resample by columns", {"spinBoxPixelX=31"}, {"--pixel-x", "31"});
    size("resample by rows", {"spinBoxPixelY=7"}, {"--pixel-y", "7"});
    size("resample by both",
         {"pushButtonConnected", "spinBoxPixelX=9", "doubleSpinBoxPercentY=50",
          "doubleSpinBoxZScale=-1.25"},
         {"--pixel-x", "9", "--percent-y", "50", "--z-scale", "-1.25"});
}

} // namespace

void ToldRun::addRows()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<Strings>("files");
    QTest::addColumn<Strings>("before");
    QTest::addColumn<Strings>("after");
    QTest::addColumn<QString>("boxes");
    QTest::addColumn<Strings>("arguments");
    importRows();
    gridRows();
    conversionRows();
    filterRows();
    resampleRows();
}

ToldRun ToldRun::fetched()
{
    QFETCH(QString, action);
    QFETCH(Strings, files);
    QFETCH(Strings, before);
    QFETCH(Strings, after);
    QFETCH(QString, boxes);
    QFETCH(Strings, arguments);
    return {action, files, before, after, boxes, arguments};
}

void ToldRun::announce(ModalAnswers &answers, const QDir &folder, const QString &to) const
{
    for (const QString &file : files) {
        const QString caption = file.section('|', 0, 0);
        Strings paths;
        for (const QString &name : file.section('|', 2).split('+'))
            paths << folder.filePath(name);
        if (paths.size() > 1)
            answers.chooseFiles(caption, paths);
        else
            answers.chooseFile(caption, paths.constFirst());
    }
    answers.chooseFile("Save File", folder.filePath(to));
    for (const QChar box : boxes)
        answers.withDialog([box](QDialog *dialog) { answerBox(dialog, box == 'y'); });
}

void ToldRun::drive(const QDialog &dialog) const
{
    for (const QString &field : before)
        setField(dialog, field);
    for (const QString &file : files)
        click(dialog, "pushButtonBrowse" + file.section('|', 1, 1));
    click(dialog, "pushButtonBrowseToFile");
    for (const QString &field : after)
        setField(dialog, field);
    std::srand(1); // as in a program that was just started
    click(dialog, "pushButtonOK");
    QTRY_VERIFY(!dialog.isVisible());
}
