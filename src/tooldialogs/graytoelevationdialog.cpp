#include "tooldialogs/graytoelevationdialog.h"

#include "tools/toolfiles.h"

#include <QMessageBox>

#include <utility>

GrayToElevationDialog::GrayToElevationDialog(QWidget *parent) : FormDialog(parent)
{
    describe(tr("Convert Grayscale File Into Elevation File"),
             tr("To convert a grayscale file into an elevation file.\n\n"
                "The elevation value is derived by adding the three color values, so the "
                "maximum elevation of the output file is 3 * 255 = 765."));
    setHolds(OperationOutcome::Holds::Heights);
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
