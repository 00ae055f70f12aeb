#pragma once

#include "importdialogs/asciimeshdialog.h"
#include "importers/delaunay.h"
#include "ui_asciiirregulardialog.h"

/// Turns a text file of scattered x, y, z points into an elevation file.
class AsciiIrregularDialog
    : public FormDialog<Ui::AsciiIrregularDialog, AsciiMeshDialog> {
    Q_OBJECT

public:
    explicit AsciiIrregularDialog(QWidget *parent = nullptr);

protected:
    /// Tells of a file without a line, too.
    [[nodiscard]] QStringList scanRows(const MeshScan &scan) const override;
    bool asciiToImage() override;

private:
    void showTriangulationFailure(const DelaunayFailure &failure);
};
