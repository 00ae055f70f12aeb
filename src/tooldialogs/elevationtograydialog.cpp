#include "tooldialogs/elevationtograydialog.h"

#include "tools/toolfiles.h"
#include "views/waitcursor.h"

#include <QMessageBox>

#include <utility>

ElevationToGrayDialog::ElevationToGrayDialog(QWidget *parent) : FormDialog(parent)
{
    setHolds(OperationOutcome::Holds::Colours);
    addInput(lineEditFromFile);
}

bool ElevationToGrayDialog::convert(bool normalize)
{
    const WaitCursor wait;
    // What was there goes first: two rasters of a large file may not fit.
    m_gray.picture = QImage();
    NoProgress unwatched;
    Result<GrayPicture> gray =
        normalize ? normalizeFileToGray(lineEditFromFile->text(), m_gray.found, unwatched)
                  : elevationFileToGray(lineEditFromFile->text(),
                                        doubleSpinBoxZScale->value(), unwatched);
    if (gray)
        m_gray = std::move(*gray);
    return gray.has_value();
}

bool ElevationToGrayDialog::userWantsNormalization()
{
    return QMessageBox::information(
               this, windowTitle(), normalizationQuestion(m_gray.found),
               QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

void ElevationToGrayDialog::accept()
{
    if (!convert(false))
        return showCouldNotOpen(lineEditFromFile->text());
    if (m_gray.found.hasCutOff() && userWantsNormalization() && !convert(true))
        return showCouldNotOpen(lineEditFromFile->text());
    noteCut(qint64(m_gray.found.belowCount) + m_gray.found.aboveCount);
    ToolDialog::accept();
}

Result<QImage> ElevationToGrayDialog::work(Progress & /*progress*/)
{
    return std::exchange(m_gray.picture, QImage());
}
