#include "importdialogs/asciiregulardialog.h"

#include "importers/asciiregular.h"
#include "views/waitcursor.h"

#include <QFile>

AsciiRegularDialog::AsciiRegularDialog(QWidget *parent)
    : FormDialog(tr("ASCII Regular Import"), parent)
{
}

void AsciiRegularDialog::showBoundaries()
{
    AsciiMeshDialog::showBoundaries();
    const MeshBoundaries &b = boundaries();
    spinBoxWidth->setValue(proposedSide(b.minX, b.maxX, spinBoxWidth->maximum()));
    spinBoxHeight->setValue(proposedSide(b.minY, b.maxY, spinBoxHeight->maximum()));
}

bool AsciiRegularDialog::asciiToImage()
{
    QFile file;
    if (!openInput(file))
        return false;
    AsciiRegularOptions options;
    options.boundaries = boundaries();
    options.width = spinBoxWidth->value();
    options.height = spinBoxHeight->value();
    options.skip = spinBoxSkip->value();
    options.zScale = doubleSpinBoxZScale->value();
    const Result<AsciiRegularMesh> mesh = [&] {
        const WaitCursor wait;
        NoProgress unwatched;
        return convertAsciiRegular(file, options, unwatched);
    }();
    if (!mesh)
        return false;
    notePoints(mesh->pointsUsed, mesh->pointsRead);
    noteCut(mesh->losses.cut);
    showRows(mesh->rows);
    return mesh->hasPoints && saveOutput(mesh->image);
}
