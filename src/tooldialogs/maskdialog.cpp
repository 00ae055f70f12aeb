#include "tooldialogs/maskdialog.h"

#include "raster/imagefile.h"
#include "tools/mask.h"

MaskDialog::MaskDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    // Users know this window by this caption, though it opens a file.
    addInput(lineEditMaskFile, {.caption = tr("Save File")});
}

bool MaskDialog::work(QString *error)
{
    QImage image = loadImageFile(lineEditFromFile->text());
    if (image.isNull()) {
        *error = couldNotOpen(lineEditFromFile->text());
        return false;
    }
    const QImage mask = loadImageFile(lineEditMaskFile->text());
    if (mask.isNull() || !applyMask(image, mask)) {
        *error = couldNotOpen(lineEditMaskFile->text());
        return false;
    }
    return save(image, lineEditToFile->text(), error);
}
