#include "importdialogs/usgsdemconversiondialog.h"

#include "importdialogs/demdatadialog.h"

#include <QGuiApplication>
#include <QMessageBox>

UsgsDemConversionDialog::UsgsDemConversionDialog(QWidget *parent)
    : FormDialog(tr("Convert USGS DEM File(s) Into Elevation File"), parent)
{
    setHolds(OperationOutcome::Holds::Heights);
    requireFiles({lineEditFromFile});
    connect(pushButtonBrowseFromFile, &QPushButton::clicked, this,
            &UsgsDemConversionDialog::chooseFiles);
}

void UsgsDemConversionDialog::chooseFiles()
{
    // Cancelling empties the list and leaves the field as it is.
    fileNames = askToOpenSeveral(
        tr("DEM Files (*.dem);;Data Files (*.dat *.asc);;All Files (*.*)"),
        tr("Select one or more files to open"));
    if (fileNames.isEmpty())
        return;
    QString shown;
    for (const QString &fileName : fileNames) {
        rememberDirectoryOf(fileName);
        shown += '"' + fileName + "\" ";
    }
    lineEditFromFile->setText(shown.trimmed());
    validateOKButton();
}

void UsgsDemConversionDialog::accept()
{
    NoProgress unwatched;
    UsgsDemImport import(spinBoxVoidValue->value(), *this);
    const Result<ElevationImage> image = import.run(fileNames, unwatched);
    noteVoids(import.losses().voids);
    noteCut(import.losses().cut);
    if (image)
        (void)saveOutput(*image); // a failure is shown, and the dialog closes as well
    QDialog::accept();
}

bool UsgsDemConversionDialog::confirmHeader(UsgsDemData &header)
{
    DemDataDialog dialog(this, &header);
    return dialog.exec() == QDialog::Accepted;
}

bool UsgsDemConversionDialog::continueChecking(const SuspiciousElevation &jump)
{
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor); // instead of the wait cursor
    const auto answer = QMessageBox::warning(this, messageTitle(), jump.question(),
                                             QMessageBox::Yes | QMessageBox::No);
    QGuiApplication::restoreOverrideCursor();
    return answer == QMessageBox::Yes;
}

void UsgsDemConversionDialog::readingFile(const QString &fileName)
{
    lineEditCurrentInputFile->setText(fileName);
    lineEditCurrentInputFile->repaint();
    if (fileName.isEmpty())
        QGuiApplication::restoreOverrideCursor();
    else
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}
