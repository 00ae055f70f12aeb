#include "importdialogs/asciiregulardialog.h"

#include "importers/asciiregular.h"
#include "raster/elevationimage.h"
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
    ElevationImage image;
    QStringList rows;
    bool stored = false;
    {
        const WaitCursor wait;
        stored = convertAsciiRegular(file, options, image, &rows);
    }
    showRows(rows);
    return stored && saveOutput(image);
}
