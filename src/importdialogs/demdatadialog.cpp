#include "importdialogs/demdatadialog.h"

#include "importers/demdatarows.h"
#include "views/fieldhelp.h"

DemDataDialog::DemDataDialog(QWidget *parent, UsgsDemData *header) : QDialog(parent)
{
    setupUi(this);
    completeHelp(this);
    tableWidgetDEMData->clear();
    tableWidgetDEMData->setColumnCount(1);
    for (const DemDataRow &row : demDataRows(*header))
        addLine(row.label, row.value);
}

void DemDataDialog::addLine(const QString &label, const QString &value)
{
    const int row = tableWidgetDEMData->rowCount();
    tableWidgetDEMData->insertRow(row);
    tableWidgetDEMData->setVerticalHeaderItem(row, new QTableWidgetItem(label));
    auto *item = new QTableWidgetItem(value);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsEnabled);
    tableWidgetDEMData->setItem(row, 0, item);
}
