#include "tooldialogs/elevationtocolordialog.h"

#include "raster/elevationimage.h"
#include "tools/toolfiles.h"
#include "views/waitcursor.h"

#include <QMessageBox>
#include <QPixmap>

ElevationToColorDialog::ElevationToColorDialog(QWidget *parent) : FormDialog(parent)
{
    setHolds(OperationOutcome::Holds::Colours);
    addInput(lineEditFromFile,
             {.mayTake = [this](const QString &name) { return showRangeOrError(name); }});
    addInput(lineEditPaletteFile,
             {.mayTake = [this](const QString &name) { return choosePalette(name); }});
    setOutputFilter(tr("Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif);;"
                       "All Files (*.*)"));
    connect(checkBoxIgnoreZeroValues, &QCheckBox::clicked, this,
            &ElevationToColorDialog::checkBoxIgnoreZeroValuesClicked);
}

bool ElevationToColorDialog::showRangeOrError(const QString &fileName)
{
    const bool shown = showRangeOf(fileName);
    if (!shown)
        showCouldNotOpen(fileName);
    return shown;
}

bool ElevationToColorDialog::choosePalette(const QString &fileName)
{
    const Result<QImage> loaded = openPalette(fileName);
    if (!loaded) {
        QMessageBox::critical(this, windowTitle(), loaded.error().text);
        return false;
    }
    palette = *loaded;
    showPalette();
    return true;
}

void ElevationToColorDialog::showPalette()
{
    if (palette.isNull())
        return;
    const qreal ratio = labelPalette->devicePixelRatioF();
    QImage shown = palette.scaled(labelPalette->size() * ratio, Qt::IgnoreAspectRatio,
                                  Qt::SmoothTransformation);
    shown.setDevicePixelRatio(ratio);
    labelPalette->setPixmap(QPixmap::fromImage(shown));
}

void ElevationToColorDialog::resizeEvent(QResizeEvent *event)
{
    ConverterDialog::resizeEvent(event);
    showPalette();
}

void ElevationToColorDialog::checkBoxIgnoreZeroValuesClicked()
{
    // Without a file there is nothing to show and nothing to complain of.
    showRangeOf(lineEditFromFile->text());
}

bool ElevationToColorDialog::showRangeOf(const QString &fileName)
{
    const WaitCursor wait;
    const ElevationImage image(fileName);
    if (!image.isNull())
        updateElevationRange(image);
    return !image.isNull();
}

void ElevationToColorDialog::updateElevationRange(const ElevationImage &image)
{
    const PaletteRange range =
        proposedRange(image, checkBoxIgnoreZeroValues->isChecked());
    spinBoxElevationRangeLower->setValue(*range.lower);
    spinBoxElevationLower->setValue(*range.lower);
    spinBoxElevationRangeUpper->setValue(*range.upper);
    spinBoxElevationUpper->setValue(*range.upper);
}

Result<QImage> ElevationToColorDialog::work(Progress &progress)
{
    if (palette.isNull())
        return failed(couldNotOpenText(lineEditPaletteFile->text()));
    qint64 cut = 0;
    Result<QImage> image = elevationFileToColor(
        lineEditFromFile->text(), palette,
        {spinBoxElevationLower->value(), spinBoxElevationUpper->value()}, progress, &cut);
    noteCut(cut);
    return image;
}
