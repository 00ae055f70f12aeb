#include "tooldialogs/graytoelevationdialog.h"

#include "raster/elevationimage.h"

#include <QMessageBox>

GrayToElevationDialog::GrayToElevationDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

Result<QImage> GrayToElevationDialog::work(Progress & /*progress*/)
{
    ElevationImage image(lineEditFromFile->text());
    if (image.isNull())
        return failed(couldNotOpen(lineEditFromFile->text()));
    m_range = grayToElevation(image);
    return image;
}

void GrayToElevationDialog::tellResult()
{
    QMessageBox::information(
        this, windowTitle(),
        tr("Conversion finished.\nElevation values between %1 and %2 were detected.\n\n"
           "Note that an elevation value is the sum of the\n"
           "red, green and blue values of a pixel.")
            .arg(elevationAsInteger(m_range.lowest))
            .arg(elevationAsInteger(m_range.highest)));
}
