#include "template/templatedialog.h"

#include "template/templatetool.h"

TemplateDialog::TemplateDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

bool TemplateDialog::work(QString *error)
{
    const ElevationImage image(lineEditFromFile->text());
    if (image.isNull()) {
        *error = couldNotOpen(lineEditFromFile->text());
        return false;
    }
    NoProgress nobody;
    const Result<ElevationImage> turned = turnUpsideDown(image, nobody);
    if (!turned) {
        *error = turned.error().text;
        return false;
    }
    return save(*turned, lineEditToFile->text(), error);
}
