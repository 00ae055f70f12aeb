#include "tooldialogs/changeblue0pixelsdialog.h"

#include "raster/imagefile.h"
#include "tools/elevationconversions.h"

ChangeBlue0PixelsDialog::ChangeBlue0PixelsDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

bool ChangeBlue0PixelsDialog::work(QString *error)
{
    QImage image = loadImageFile(lineEditFromFile->text());
    if (image.isNull()) {
        *error = couldNotOpen(lineEditFromFile->text());
        return false;
    }
    changeBlue0Pixels(image);
    return save(image, lineEditToFile->text(), error);
}
