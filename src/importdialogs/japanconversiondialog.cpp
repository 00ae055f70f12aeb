#include "importdialogs/japanconversiondialog.h"

#include "importers/japandem.h"
#include "raster/elevationimage.h"
#include "views/waitcursor.h"

#include <QFile>
#include <QMessageBox>

JapanConversionDialog::JapanConversionDialog(QWidget *parent)
    : FormDialog(tr("Japan DEM Import"), parent)
{
    setHolds(OperationOutcome::Holds::Heights);
    addInput(lineEditFromFile, {.filter = tr("DEM Files (*.mem);;All Files (*.*)")});
}

void JapanConversionDialog::accept()
{
    QFile file(lineEditFromFile->text());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return showCouldNotOpen(file.fileName());
    const Result<JapanDem> dem = [&] {
        const WaitCursor wait;
        NoProgress unwatched;
        return convertJapanDem(file, spinBoxVoidValue->value(), file.fileName(),
                               unwatched);
    }();
    if (!dem) {
        QMessageBox::critical(this, tr("Error"), dem.error().text);
        return;
    }
    file.close();
    noteVoids(dem->voidCount);
    (void)saveOutput(dem->image); // a failure is shown, and the count as well
    QMessageBox::information(this, messageTitle(), dem->message());
    QDialog::accept();
}
