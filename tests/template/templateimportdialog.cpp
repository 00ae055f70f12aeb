#include "template/templateimportdialog.h"

#include "template/templateimport.h"
#include "views/waitcursor.h"

#include <QFile>

TemplateImportDialog::TemplateImportDialog(QWidget *parent)
    : FormDialog(tr("Template Import"), parent)
{
    describe(tr("Convert Template File Into Elevation File"),
             tr("Makes an elevation file of a file of the template's format."));
    addInput(lineEditFromFile, {.filter = tr("Template Files (*.raw);;All Files (*.*)")});
}

void TemplateImportDialog::accept()
{
    QFile file(lineEditFromFile->text());
    if (!file.open(QIODevice::ReadOnly))
        return showCouldNotOpen(file.fileName());
    const Result<ElevationImage> image = [&file] {
        const WaitCursor wait;
        NoProgress unwatched;
        return importTemplate(file, {}, file.fileName(), unwatched);
    }();
    if (!image)
        return showError(image.error().text);
    if (saveOutput(*image))
        QDialog::accept();
}
