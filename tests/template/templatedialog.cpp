#include "template/templatedialog.h"

#include "template/templatetool.h"
#include "tools/toolfiles.h"

TemplateDialog::TemplateDialog(QWidget *parent) : FormDialog(parent)
{
    describe(tr("Turn a Terrain Upside Down"),
             tr("Turns a terrain upside down: each elevation becomes its opposite."));
    addInput(lineEditFromFile);
}

Result<QImage> TemplateDialog::work(Progress &progress)
{
    const ElevationImage image(lineEditFromFile->text());
    if (image.isNull())
        return failed(couldNotOpenText(lineEditFromFile->text()));
    return turnUpsideDown(image, progress);
}
