#include "tooldialogs/elevationtocolordialog.h"

#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "tools/elevationconversions.h"
#include "views/waitcursor.h"

#include <QMessageBox>
#include <QPixmap>

ElevationToColorDialog::ElevationToColorDialog(QWidget *parent) : FormDialog(parent)
{
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
    QImage loaded = loadImageFile(fileName);
    if (loaded.isNull()) {
        QMessageBox::critical(this, windowTitle(), couldNotOpen(fileName));
        return false;
    }
    setPalette(loaded);
    palette = loaded;
    showPalette();
    return true;
}

void ElevationToColorDialog::setPalette(QImage &image) { spreadTopRow(image); }

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
    const ElevationLimits range =
        elevationRange(image, checkBoxIgnoreZeroValues->isChecked());
    const int lower = elevationAsInteger(range.lowest);
    const int upper = elevationAsInteger(range.highest);
    spinBoxElevationRangeLower->setValue(lower);
    spinBoxElevationLower->setValue(lower);
    spinBoxElevationRangeUpper->setValue(upper);
    spinBoxElevationUpper->setValue(upper);
}

Result<QImage> ElevationToColorDialog::work(Progress & /*progress*/)
{
    ElevationImage image(lineEditFromFile->text());
    if (image.isNull())
        return failed(couldNotOpen(lineEditFromFile->text()));
    if (!elevationToColor(image, palette, spinBoxElevationLower->value(),
                          spinBoxElevationUpper->value()))
        return failed(couldNotOpen(lineEditPaletteFile->text()));
    return image;
}
