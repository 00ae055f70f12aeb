#pragma once

#include "importers/bindemconversion.h"
#include "importers/bindemheaderfile.h"
#include "ui_binconversiondialog.h"
#include "views/converterdialog.h"

/// Converts a rectangle of a raw binary raster that a header file describes.
class BinConversionDialog : public FormDialog<Ui::BinConversionDialog>,
                            private BinDemHeaderListener,
                            private BinDemQuestions {
    Q_OBJECT

public:
    explicit BinConversionDialog(QWidget *parent = nullptr);

    /// Stays open when the raster cannot be opened or the user does not proceed.
    void accept() override;

private:
    /// Unlike the other dialogs' it also disables.
    void validateOKButton() override;
    void readHeaderFile(const QString &fileName);
    [[nodiscard]] bool openHeaderFile(const QString &fileName);
    void setFields();
    void setKBytes();
    void setMapUnits();
    [[nodiscard]] BinDemOptions optionsFromForm() const;

    void bitsGuessed(int bitsPerPixel) override;
    [[nodiscard]] bool proceedWithoutKeyword() override;

    BinDemHeaderFile m_headerFile;
};
