#include "importdialogs/asciiirregulardialog.h"

#include "importers/asciiirregular.h"
#include "raster/elevationimage.h"
#include "views/waitcursor.h"

#include <QFile>
#include <QMessageBox>

AsciiIrregularDialog::AsciiIrregularDialog(QWidget *parent)
    : FormDialog(tr("ASCII Irregular Import"), parent)
{
}

QStringList AsciiIrregularDialog::scanRows(const MeshScan &scan) const
{
    QStringList rows;
    if (scan.lineCounter == 0)
        rows << AsciiMesh::tr("Not a single valid line encountered.");
    return rows << AsciiMeshDialog::scanRows(scan);
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

    ScatteredPoints scattered;
    if (!scattered.allocate(options.nodalPointEstimate)) {
        showError(tr("There is not enough memory for %1 nodal points.")
                      .arg(options.nodalPointEstimate));
        return false;
    }
    ElevationImage image;
    QStringList rows;
    // Under the arrow cursor, after the work; this box has no parent.
    QList<std::pair<QString, QString>> notices;
    int code = 0;
    bool stored = false;
    {
        const WaitCursor wait;
        stored = readScatteredPoints(file, options, scattered, &rows);
        if (stored)
            code = fillScatteredPoints(scattered, options, image,
                                       [&](const QString &title, const QString &text) {
                                           notices.append({title, text});
                                       });
    }
    showRows(rows);
    for (const auto &[title, text] : notices)
        QMessageBox::critical(nullptr, title, text);
    if (code != 0)
        showError(tr("The triangulation routine\nreturned an error code: %1.").arg(code));
    return stored && code == 0 && saveOutput(image);
}
