#include "importdialogs/sdtsconversiondialog.h"

#include "importers/sdtsunits.h"
#include "views/waitcursor.h"

#include <QMessageBox>
#include <QRegularExpression>
#include <QShortcut>

SdtsConversionDialog::SdtsConversionDialog(QWidget *parent)
    : FormDialog(tr("Error"), parent)
{
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
    lineEditDDSHFile->setText(m_conversion.ddshFile);
    lineEditDDOMFile->setText(m_conversion.ddomFile);
    lineEditCEL0File->setText(m_conversion.cel0File);
    lineEditInputUnits->setText(m_conversion.inputUnit);
    spinBoxVoidValue->setValue(m_conversion.voidValue);
    spinBoxFillValue->setValue(m_conversion.fillValue);

    const int unit = comboBoxOutputUnits->findText(m_conversion.inputUnit);
    if (unit >= 0)
        comboBoxOutputUnits->setCurrentIndex(unit);
    else
        QMessageBox::warning(this, tr("Warning"),
                             tr("The DDSH file \"%1\"\n"
                                "contains an unknown elevation unit: \"%2\"")
                                 .arg(m_conversion.ddshFile, m_conversion.inputUnit));
}

void SdtsConversionDialog::CalculateCalibrationFactor()
{
    if (comboBoxOutputUnits->currentIndex() < 0) {
        QMessageBox::warning(this, tr("Error"),
                             tr("Unsupported unit in the input data."
                                "Using a scaling factor of 1.0."));
        m_conversion.calibrationFactor = 1.0;
        return;
    }
    const double outScale = comboBoxOutputUnits->currentData().toDouble();
    const int unit =
        comboBoxOutputUnits->findText(m_conversion.inputUnit, Qt::MatchFixedString);
    // Elevations of an unknown unit are taken for millimeters.
    const double inScale =
        unit >= 0 ? comboBoxOutputUnits->itemData(unit).toDouble() : 1.0;
    m_conversion.calibrationFactor = inScale / outScale;
}

void SdtsConversionDialog::accept()
{
    CalculateCalibrationFactor();
    bool hasImage = false;
    {
        const WaitCursor waitCursor;
        hasImage = m_conversion.readCells();
    }
    if (!hasImage)
        return showError(tr("Could not create output image."));
    if (saveOutput(m_conversion.image))
        QDialog::accept();
}
