// The buttons of the form: files, colour, scales and a standard camera.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scene/framename.h"
#include "scene/scenerydata.h"
#include "scene/standardcamera.h"
#include "ui_scenerymdichildform.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QScopeGuard>

void SceneryDelegate::fixScale()
{
    viewToData();
    const QImage texture = loadImageFile(inputFile(scenery.parameters.TDateiname));
    if (texture.isNull())
        return;
    view->setCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([this] { view->setCursor(Qt::ArrowCursor); });
    const QImage elevation = loadImageFile(inputFile(scenery.parameters.HDateiname));
    if (!elevation.isNull()) {
        scenery.parameters.HDateiSkalaX = double(texture.width()) / elevation.width();
        scenery.parameters.HDateiSkalaY = double(texture.height()) / elevation.height();
        view->form().doubleSpinBoxElevScaleX->setValue(scenery.parameters.HDateiSkalaX);
        view->form().doubleSpinBoxElevScaleY->setValue(scenery.parameters.HDateiSkalaY);
        setModified();
    }
}

void SceneryDelegate::repositionSceneryFrom() { reposition(false); }

void SceneryDelegate::repositionSceneryTo() { reposition(true); }

void SceneryDelegate::reposition(bool lastFrame)
{
    viewToData();
    view->setCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([this] { view->setCursor(Qt::ArrowCursor); });
    const QSize texture = loadImageFile(inputFile(scenery.parameters.TDateiname)).size();
    if (texture.isEmpty())
        return;
    const ElevationImage elevation(inputFile(scenery.parameters.HDateiname),
                                   scenery.parameters.HDateiSkalaX,
                                   scenery.parameters.HDateiSkalaY, nullptr);
    if (!elevation.isNull()) {
        const auto [lowest, highest] = elevation.elevationRange();
        // A flat terrain gives an infinite scale, which the form cuts to its largest.
        (lastFrame ? scenery.parameters.HDateiSkalaZE
                   : scenery.parameters.HDateiSkalaZA) =
            (elevation.height() + elevation.width()) / (20 * (highest - lowest));
    }
    setStandardCamera(scenery.parameters, texture,
                      lastFrame ? FlightEnd::Last : FlightEnd::First);
    dataToView();
    setModified();
}

void SceneryDelegate::browseTextureFile()
{
    viewToData();
    const QString file = QFileDialog::getOpenFileName(
        view, tr("Texture File"), scenery.parameters.TDateiname,
        tr("Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif);;All Files (*.*)"));
    if (file.isEmpty())
        return;
    scenery.parameters.TDateiname = file;
    setModified();
    dataToView();
}

void SceneryDelegate::browseElevationFile()
{
    viewToData();
    // No JPEG: it would not keep the integers of the pixels.
    const QString file = QFileDialog::getOpenFileName(
        view, tr("Elevation File"), scenery.parameters.HDateiname,
        tr("Image Files (*.bmp *.png *.ppm *.tga *.tif);;All Files (*.*)"));
    if (file.isEmpty())
        return;
    scenery.parameters.HDateiname = file;
    setModified();
    dataToView();
}

void SceneryDelegate::browseOutputFiles()
{
    viewToData();
    for (;;) {
        const QString file = QFileDialog::getSaveFileName(
            view, tr("Output File"), scenery.parameters.AusDateiname,
            tr("Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif);;All Files (*.*)"));
        if (file.isEmpty())
            return;
        if (!hasFrameNumber(file)) {
            QMessageBox::warning(view, tr("Output File"),
                                 tr("The output file must contain a C-style format "
                                    "string\nfor a signed decimal integer: %d or %03d or "
                                    "similar."));
            continue;
        }
        const QFileInfo info(file);
        scenery.parameters.AusDateiname =
            info.absolutePath() + QLatin1Char('/') + info.completeBaseName();
        setModified();
        dataToView();
        return;
    }
}

void SceneryDelegate::selectColor()
{
    viewToData();
    const QColor colour =
        QColorDialog::getColor(QColor(scenery.parameters.Hintergrund), view);
    if (!colour.isValid())
        return;
    scenery.parameters.Hintergrund = colour.rgb();
    setModified();
    dataToView();
}
