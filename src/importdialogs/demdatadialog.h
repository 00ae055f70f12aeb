#pragma once

#include "ui_demdatadialog.h"

#include <QDialog>

class UsgsDemData;

/// Shows the header of a USGS DEM file; Cancel ends the import.
class DemDataDialog : public QDialog, private Ui::DemDataDialog {
    Q_OBJECT

public:
    DemDataDialog(QWidget *parent, UsgsDemData *header);

private:
    void addLine(const QString &label, const QString &value);
};
