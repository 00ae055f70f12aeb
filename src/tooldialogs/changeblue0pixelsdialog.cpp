#include "tooldialogs/changeblue0pixelsdialog.h"

#include "tools/toolfiles.h"

ChangeBlue0PixelsDialog::ChangeBlue0PixelsDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

Result<QImage> ChangeBlue0PixelsDialog::work(Progress &progress)
{
    return changeBlue0File(lineEditFromFile->text(), progress);
}
