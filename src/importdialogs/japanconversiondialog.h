#pragma once

#include "ui_japanconversiondialog.h"
#include "views/converterdialog.h"

/// Imports a Japan DEM file.
class JapanConversionDialog : public FormDialog<Ui::JapanConversionDialog> {
    Q_OBJECT

public:
    explicit JapanConversionDialog(QWidget *parent = nullptr);

    /// Stays open when the input file cannot be read to its end.
    void accept() override;
};
