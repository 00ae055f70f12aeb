#pragma once

#include "importers/usgsdemimport.h"
#include "ui_usgsdemconversiondialog.h"
#include "views/converterdialog.h"

#include <QStringList>

/// Imports USGS DEM files, several of them as one mosaic.
class UsgsDemConversionDialog : public FormDialog<Ui::UsgsDemConversionDialog>,
                                private UsgsDemQuestions {
    Q_OBJECT

public:
    explicit UsgsDemConversionDialog(QWidget *parent = nullptr);

    void accept() override;

private:
    void chooseFiles();
    [[nodiscard]] bool confirmHeader(UsgsDemData &header) override;
    [[nodiscard]] bool continueChecking(const SuspiciousElevation &jump) override;
    void readingFile(const QString &fileName) override;

    QStringList fileNames;
};
