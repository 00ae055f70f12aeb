#include "tooldialogs/elevationtograydialog.h"

#include "views/waitcursor.h"

#include <QMessageBox>

#include <utility>

ElevationToGrayDialog::ElevationToGrayDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
}

bool ElevationToGrayDialog::convert(bool normalize)
{
    const WaitCursor wait;
    // What was there goes first: two rasters of a large file may not fit.
    m_image = ElevationImage();
    m_image = ElevationImage(lineEditFromFile->text());
    if (m_image.isNull())
        return false;
    elevationToGray(m_image, normalize);
    return true;
}

void ElevationToGrayDialog::elevationToGray(ElevationImage &image, bool normalize)
{
    m_conversion.zScale = doubleSpinBoxZScale->value();
    ::elevationToGray(image, normalize, m_conversion);
}

bool ElevationToGrayDialog::userWantsNormalization()
{
    const QString text =
        tr("Conversion finished.\nThere were %1 pixels below 0\nand %2 pixels above 255."
           "\nNormalization would require a z scale of %3.\nNormalize?")
            .arg(m_conversion.belowCount)
            .arg(m_conversion.aboveCount)
            .arg(m_conversion.normalizingScale(), 0, 'f', 2);
    return QMessageBox::information(this, windowTitle(), text,
                                    QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

void ElevationToGrayDialog::accept()
{
    if (!convert(false))
        return showCouldNotOpen(lineEditFromFile->text());
    const bool cutOff = m_conversion.belowCount > 0 || m_conversion.aboveCount > 0;
    if (cutOff && userWantsNormalization() && !convert(true))
        return showCouldNotOpen(lineEditFromFile->text());
    ToolDialog::accept();
}

Result<QImage> ElevationToGrayDialog::work(Progress & /*progress*/)
{
    return std::exchange(m_image, ElevationImage());
}
