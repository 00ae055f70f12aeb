// The buttons of the form: files, colour, scales and a standard camera.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scene/framename.h"
#include "scene/scenerydata.h"
#include "ui_scenerymdichildform.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QScopeGuard>

void SceneryDelegate::fixScale()
{
    viewToData();
    const QImage texture = loadImageFile(inputFile(data->TDateiname));
    if (texture.isNull())
        return;
    view->setCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([this] { view->setCursor(Qt::ArrowCursor); });
    const QImage elevation = loadImageFile(inputFile(data->HDateiname));
    if (!elevation.isNull()) {
        data->HDateiSkalaX = double(texture.width()) / elevation.width();
        data->HDateiSkalaY = double(texture.height()) / elevation.height();
        view->form().doubleSpinBoxElevScaleX->setValue(data->HDateiSkalaX);
        view->form().doubleSpinBoxElevScaleY->setValue(data->HDateiSkalaY);
        setModified();
    }
}

void SceneryDelegate::repositionSceneryFrom() { reposition(false); }

void SceneryDelegate::repositionSceneryTo() { reposition(true); }

// South of the terrain, in its middle, looking north and down, as one reads a book.
void SceneryDelegate::reposition(bool lastFrame)
{
    viewToData();
    view->setCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([this] { view->setCursor(Qt::ArrowCursor); });
    const QSize texture = loadImageFile(inputFile(data->TDateiname)).size();
    if (texture.isEmpty())
        return;
    const auto set = [&](double SceneryData::*first, double SceneryData::*last,
                         double value) { (*data).*(lastFrame ? last : first) = value; };
    const ElevationImage elevation(inputFile(data->HDateiname), data->HDateiSkalaX,
                                   data->HDateiSkalaY, nullptr);
    if (!elevation.isNull()) {
        const auto [lowest, highest] = elevation.elevationRange();
        // A flat terrain gives an infinite scale, which the form cuts to its largest.
        set(&SceneryData::HDateiSkalaZA, &SceneryData::HDateiSkalaZE,
            (elevation.height() + elevation.width()) / (20 * (highest - lowest)));
    }
    set(&SceneryData::BeobXA, &SceneryData::BeobXE, texture.width() * 0.5);
    set(&SceneryData::BeobYA, &SceneryData::BeobYE, -texture.height());
    set(&SceneryData::BeobZA, &SceneryData::BeobZE, texture.height() * 1.5);
    set(&SceneryData::RichtungA, &SceneryData::RichtungE, 0.0);
    set(&SceneryData::NeigungA, &SceneryData::NeigungE, -45.0);
    set(&SceneryData::BrennA, &SceneryData::BrennE, 1000.0);
    set(&SceneryData::VerkantenA, &SceneryData::VerkantenE, 0.0);
    dataToView();
    setModified();
}

void SceneryDelegate::browseTextureFile()
{
    viewToData();
    const QString file = QFileDialog::getOpenFileName(
        view, tr("Texture File"), data->TDateiname,
        tr("Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif);;All Files (*.*)"));
    if (file.isEmpty())
        return;
    data->TDateiname = file;
    setModified();
    dataToView();
}

void SceneryDelegate::browseElevationFile()
{
    viewToData();
    // No JPEG: it would not keep the integers of the pixels.
    const QString file = QFileDialog::getOpenFileName(
        view, tr("Elevation File"), data->HDateiname,
        tr("Image Files (*.bmp *.png *.ppm *.tga *.tif);;All Files (*.*)"));
    if (file.isEmpty())
        return;
    data->HDateiname = file;
    setModified();
    dataToView();
}

void SceneryDelegate::browseOutputFiles()
{
    viewToData();
    for (;;) {
        const QString file = QFileDialog::getSaveFileName(
            view, tr("Output File"), data->AusDateiname,
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
        data->AusDateiname =
            info.absolutePath() + QLatin1Char('/') + info.completeBaseName();
        setModified();
        dataToView();
        return;
    }
}

void SceneryDelegate::selectColor()
{
    viewToData();
    const QColor colour = QColorDialog::getColor(QColor(data->Hintergrund), view);
    if (!colour.isValid())
        return;
    data->Hintergrund = colour.rgb();
    setModified();
    dataToView();
}
