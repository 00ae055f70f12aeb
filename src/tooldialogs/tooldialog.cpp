#include "tooldialogs/tooldialog.h"

#include "raster/imagefile.h"
#include "views/waitcursor.h"

ToolDialog::ToolDialog(QWidget *parent) : ConverterDialog(tr("Error"), parent) {}

void ToolDialog::accept()
{
    QString error;
    bool done = false;
    {
        const WaitCursor wait; // not over the boxes
        done = work(&error);
    }
    if (!done)
        return showError(error);
    tellResult();
    ConverterDialog::accept();
}

QString ToolDialog::couldNotOpen(const QString &fileName)
{
    return tr("Could not open file \"%1\".").arg(fileName);
}

QString ToolDialog::couldNotLoad(const QString &fileName)
{
    return tr("Could not load image file \"%1\".").arg(fileName);
}

bool ToolDialog::save(const QImage &image, const QString &fileName, QString *error)
{
    const bool saved = saveImageFile(image, fileName);
    if (!saved)
        *error = tr("Could not save file \"%1\".").arg(fileName);
    return saved;
}
