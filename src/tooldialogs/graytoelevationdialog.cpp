#include "tooldialogs/graytoelevationdialog.h"

#include "tools/toolfiles.h"

#include <QMessageBox>

#include <utility>

GrayToElevationDialog::GrayToElevationDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

Result<QImage> GrayToElevationDialog::work(Progress &progress)
{
    return grayFileToElevation(lineEditFromFile->text(), progress)
        .map([this](SummedElevations &&sums) -> QImage {
            m_range = sums.range;
            return std::move(sums.image);
        });
}

void GrayToElevationDialog::tellResult()
{
    QMessageBox::information(this, windowTitle(), summedElevationsText(m_range));
}
