#include "tooldialogs/changeblue0pixelsdialog.h"

#include "raster/imagefile.h"
#include "tools/elevationconversions.h"

ChangeBlue0PixelsDialog::ChangeBlue0PixelsDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

Result<QImage> ChangeBlue0PixelsDialog::work(Progress & /*progress*/)
{
    Result<QImage> image = loadPicture(lineEditFromFile);
    if (image)
        changeBlue0Pixels(*image);
    return image;
}
