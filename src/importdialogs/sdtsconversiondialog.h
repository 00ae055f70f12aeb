#pragma once

#include "importers/sdtsconversion.h"
#include "ui_sdtsconversiondialog.h"
#include "views/converterdialog.h"

/// Imports an SDTS raster transfer, chosen by its catalog file, as elevation file.
class SdtsConversionDialog : public FormDialog<Ui::SdtsConversionDialog> {
    Q_OBJECT

public:
    explicit SdtsConversionDialog(QWidget *parent = nullptr);

    void accept() override;

private:
    void readCATDFile(const QString &fileName);
    // From the units of the input to those that are chosen.
    [[nodiscard]] double CalculateCalibrationFactor();
    void fillOutputUnits();
    void makeLabelsAnswerTheirKeys();

    SdtsConversion m_conversion;
};
