#include "importdialogs/sdtsconversiondialog.h"

#include "importers/sdtsunits.h"
#include "views/waitcursor.h"

#include <QMessageBox>
#include <QRegularExpression>
#include <QShortcut>

SdtsConversionDialog::SdtsConversionDialog(QWidget *parent)
    : FormDialog(tr("Error"), parent)
{
    setHolds(OperationOutcome::Holds::Heights);
    fillOutputUnits();
    makeLabelsAnswerTheirKeys();
    addInput(lineEditFromCATDFile,
             {.filter = tr("CATD Files (*catd.ddf);;All Files (*.*)"),
              .taken = [this](const QString &name) { readCATDFile(name); }});
    requireFiles({lineEditDDSHFile, lineEditDDOMFile, lineEditCEL0File});
}

void SdtsConversionDialog::fillOutputUnits()
{
    for (const SdtsUnit &unit : sdtsUnits())
        comboBoxOutputUnits->addItem(unit.name, unit.millimeters);
}

// Rich text underlines the keys of these labels but does not make them work.
void SdtsConversionDialog::makeLabelsAnswerTheirKeys()
{
    static const QRegularExpression underlined("<u>(.)</u>");
    for (QLabel *const label : findChildren<QLabel *>()) {
        const QString key = underlined.match(label->text()).captured(1).toUpper();
        if (key.isEmpty() || label->buddy() == nullptr)
            continue;
        auto *const shortcut = new QShortcut(QKeySequence("Alt+" + key), this);
        connect(shortcut, &QShortcut::activated, label->buddy(),
                [field = label->buddy()] { field->setFocus(Qt::ShortcutFocusReason); });
    }
}

void SdtsConversionDialog::readCATDFile(const QString &fileName)
{
    {
        const WaitCursor waitCursor;
        m_conversion.readCATDFile(fileName);
    }
    const SdtsTransfer &transfer = m_conversion.transfer();
    lineEditDDSHFile->setText(transfer.ddshFile);
    lineEditDDOMFile->setText(transfer.ddomFile);
    lineEditCEL0File->setText(transfer.cel0File);
    lineEditInputUnits->setText(transfer.inputUnit);
    spinBoxVoidValue->setValue(transfer.voidValue);
    spinBoxFillValue->setValue(transfer.fillValue);

    const int unit = comboBoxOutputUnits->findText(transfer.inputUnit);
    if (unit >= 0)
        comboBoxOutputUnits->setCurrentIndex(unit);
    else
        QMessageBox::warning(this, tr("Warning"), unknownUnitText(transfer));
}

double SdtsConversionDialog::CalculateCalibrationFactor()
{
    if (comboBoxOutputUnits->currentIndex() < 0) {
        QMessageBox::warning(this, tr("Error"),
                             tr("Unsupported unit in the input data."
                                "Using a scaling factor of 1.0."));
        return 1.0;
    }
    return calibrationFactor(m_conversion.transfer().inputUnit,
                             comboBoxOutputUnits->currentData().toDouble());
}

void SdtsConversionDialog::accept()
{
    const double factor = CalculateCalibrationFactor();
    const Result<ElevationImage> image = [&] {
        const WaitCursor waitCursor;
        NoProgress unwatched;
        return m_conversion.readCells(factor, unwatched);
    }();
    if (!image)
        return showError(image.error().text);
    noteVoids(m_conversion.losses().voids);
    noteCut(m_conversion.losses().cut);
    if (saveOutput(*image))
        QDialog::accept();
}
