#include "tooldialogs/maskdialog.h"

#include "tools/toolfiles.h"

MaskDialog::MaskDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    // Users know this window by this caption, though it opens a file.
    addInput(lineEditMaskFile, {.caption = tr("Save File")});
}

Result<QImage> MaskDialog::work(Progress &progress)
{
    return maskFile(lineEditFromFile->text(), lineEditMaskFile->text(), progress);
}
