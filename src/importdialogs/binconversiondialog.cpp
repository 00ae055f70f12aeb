#include "importdialogs/binconversiondialog.h"

#include "raster/elevationimage.h"
#include "views/waitcursor.h"

#include <QFile>
#include <QGuiApplication>
#include <QMessageBox>

BinConversionDialog::BinConversionDialog(QWidget *parent)
    : FormDialog(tr("Error"), parent)
{
    setHolds(OperationOutcome::Holds::Heights);
    addInput(lineEditFromFile, {.filter = tr("DEM Files (*.dem *.img *.bin *.bil *.flt);;"
                                             "All Files (*.*)")});
    addInput(lineEditHeaderFile,
             {.filter = tr("Header Files (*.hdr *.doc);;All Files (*.*)"),
              .taken = [this](const QString &name) { readHeaderFile(name); }});
}

void BinConversionDialog::readHeaderFile(const QString &fileName)
{
    validateOKButton(); // before the boxes
    if (openHeaderFile(fileName))
        setFields();
}

void BinConversionDialog::validateOKButton()
{
    pushButtonOK->setEnabled(allFilesNamed());
}

bool BinConversionDialog::openHeaderFile(const QString &fileName)
{
    if (!m_headerFile.read(fileName, *this))
        return false;
    checkBoxKeepNODATAValues->setEnabled(m_headerFile.header().hasNoDataValue);
    const QString faults = m_headerFile.header().faultsMessage();
    if (!faults.isEmpty())
        showError(faults);
    return faults.isEmpty();
}

void BinConversionDialog::setFields()
{
    const BinDemHeader &header = m_headerFile.header();
    doubleSpinBoxUpperLeftCornerX->setValue(snappedCoordinate(header.upperLeftX));
    doubleSpinBoxUpperLeftCornerY->setValue(snappedCoordinate(header.upperLeftY));
    doubleSpinBoxExtentX->setValue(snappedCoordinate(header.extentX()));
    doubleSpinBoxExtentY->setValue(snappedCoordinate(header.extentY()));
    setKBytes();
    setMapUnits();
}

void BinConversionDialog::setKBytes()
{
    labelKilobytes1->setText(binDemKilobytes(m_headerFile.header(), optionsFromForm()));
}

void BinConversionDialog::setMapUnits()
{
    for (QLabel *label : {labelUpperLeftCornerXunits, labelUpperLeftCornerYunits,
                          labelExtentXunits, labelExtentYunits})
        label->setText(m_headerFile.header().mapUnits);
}

BinDemOptions BinConversionDialog::optionsFromForm() const
{
    BinDemOptions options;
    options.upperLeftX = doubleSpinBoxUpperLeftCornerX->value();
    options.upperLeftY = doubleSpinBoxUpperLeftCornerY->value();
    options.extentX = doubleSpinBoxExtentX->value();
    options.extentY = doubleSpinBoxExtentY->value();
    options.zScale = doubleSpinBoxZScale->value();
    options.keepNoDataValues = checkBoxKeepNODATAValues->isChecked();
    options.statisticsMaximum = m_headerFile.statisticsMaximum();
    return options;
}

void BinConversionDialog::accept()
{
    QFile file(lineEditFromFile->text());
    // Each row is read at once, so a buffer between would only copy it.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return showCouldNotOpen(file.fileName());
    const Result<BinDem> dem = [&] {
        const WaitCursor wait;
        NoProgress unwatched;
        return convertBinDem(file, m_headerFile.header(), optionsFromForm(), *this,
                             unwatched);
    }();
    if (!dem)
        return;
    noteVoids(dem->losses.voids);
    noteCut(dem->losses.cut);
    (void)saveOutput(dem->image); // a failure is shown, and the range as well
    file.close();
    QMessageBox::information(this, windowTitle(), dem->range.message());
    QDialog::accept();
}

void BinConversionDialog::bitsGuessed(int bitsPerPixel)
{
    QMessageBox::information(this, tr("Information"), bitsGuessedText(bitsPerPixel));
}

bool BinConversionDialog::proceedWithoutKeyword()
{
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor); // instead of the wait cursor
    const auto answer = QMessageBox::warning(this, tr("Warning"), withoutKeyword(),
                                             QMessageBox::Yes | QMessageBox::No);
    QGuiApplication::restoreOverrideCursor();
    return answer == QMessageBox::Yes;
}
