#include "tooldialogs/maskdialog.h"

#include "raster/imagefile.h"
#include "tools/mask.h"

#include <utility>

MaskDialog::MaskDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    // Users know this window by this caption, though it opens a file.
    addInput(lineEditMaskFile, {.caption = tr("Save File")});
}

Result<QImage> MaskDialog::work(Progress &progress)
{
    Result<QImage> image = loadPicture(lineEditFromFile);
    if (!image)
        return image;
    const Result<QImage> mask = loadPicture(lineEditMaskFile);
    if (!mask)
        return mask;
    return applyMask(std::move(*image), *mask, progress)
        .map_error([this](const Failure &) {
            return Failure{couldNotOpen(lineEditMaskFile->text())};
        });
}
