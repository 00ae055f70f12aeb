#include "tooldialogs/changeblue0pixelsdialog.h"

#include "tools/toolfiles.h"

ChangeBlue0PixelsDialog::ChangeBlue0PixelsDialog(QWidget *parent) : FormDialog(parent)
{
    describe(
        tr("Eliminate BLUE = 0 Values"),
        tr("This procedure scans the entire input file for pixels with a blue component "
           "of "
           "0.\nThe blue value of those pixels is set to 1.\nThis is needed before "
           "running the "
           "\"Convert ASCII Irregular Mesh Into Elevation File\" procedure, because all "
           "pixels with BLUE = 0 are regarded as nodal points."));
    addInput(lineEditFromFile);
}

Result<QImage> ChangeBlue0PixelsDialog::work(Progress &progress)
{
    return changeBlue0File(lineEditFromFile->text(), progress);
}
