#include "importdialogs/asciiirregulardialog.h"

#include "importers/asciiirregular.h"
#include "views/waitcursor.h"

#include <QFile>
#include <QMessageBox>

#include <optional>
#include <utility>

AsciiIrregularDialog::AsciiIrregularDialog(QWidget *parent)
    : FormDialog(tr("ASCII Irregular Import"), parent)
{
}

QStringList AsciiIrregularDialog::scanRows(const MeshScan &scan) const
{
    return irregularScanRows(scan, spinBoxSkip->value());
}

bool AsciiIrregularDialog::asciiToImage()
{
    QFile file;
    if (!openInput(file))
        return false;
    AsciiIrregularOptions options;
    options.boundaries = boundaries();
    options.width = spinBoxWidth->value();
    options.height = spinBoxHeight->value();
    options.skip = spinBoxSkip->value();
    options.zScale = doubleSpinBoxZScale->value();
    options.nodalPointEstimate = spinBoxNodalPointEstimate->value();

    NoProgress unwatched;
    std::optional<WaitCursor> wait(std::in_place);
    Result<ScatteredMesh> mesh = readScatteredPoints(file, options, unwatched);
    if (!mesh) {
        wait.reset();
        showError(mesh.error().text);
        return false;
    }
    const bool hasPoints = mesh->scattered.count > 0;
    DelaunayResult<ElevationImage> image;
    if (hasPoints)
        image = fillScatteredPoints(mesh->scattered, options, unwatched);
    notePoints(mesh->scattered.count, mesh->pointsRead);
    noteCut(mesh->losses.cut);
    wait.reset(); // the boxes come under the arrow cursor
    showRows(mesh->rows);
    if (!image)
        showTriangulationFailure(image.error());
    return hasPoints && image && saveOutput(*image);
}

void AsciiIrregularDialog::showTriangulationFailure(const DelaunayFailure &failure)
{
    if (!failure.text.isEmpty())
        QMessageBox::critical(nullptr, tr("Error"), failure.text); // it has no parent
    showError(triangulationFailedText(failure.code));
}
