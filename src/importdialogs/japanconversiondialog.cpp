#include "importdialogs/japanconversiondialog.h"

#include "importers/japandem.h"
#include "raster/elevationimage.h"
#include "views/waitcursor.h"

#include <QFile>
#include <QMessageBox>

JapanConversionDialog::JapanConversionDialog(QWidget *parent)
    : FormDialog(tr("Japan DEM Import"), parent)
{
    addInput(lineEditFromFile, {.filter = tr("DEM Files (*.mem);;All Files (*.*)")});
}

void JapanConversionDialog::accept()
{
    QFile file(lineEditFromFile->text());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return showCouldNotOpen(file.fileName());
    ElevationImage image;
    int nonZeroCount = 0;
    QString error;
    bool converted = false;
    {
        const WaitCursor wait;
        converted = convertJapanDem(file, spinBoxVoidValue->value(), file.fileName(),
                                    &image, &nonZeroCount, &error);
    }
    if (!converted) {
        QMessageBox::critical(this, tr("Error"), error);
        return;
    }
    file.close();
    (void)saveOutput(image); // a failure is shown, and the count as well
    QMessageBox::information(this, messageTitle(),
                             tr("%1 non-zero elevations found.").arg(nonZeroCount));
    QDialog::accept();
}
