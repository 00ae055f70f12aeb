#pragma once

#include "importdialogs/asciimeshdialog.h"
#include "ui_asciiregulardialog.h"

/// Turns a text file of x, y, z triples on a regular grid into an elevation file.
class AsciiRegularDialog : public FormDialog<Ui::AsciiRegularDialog, AsciiMeshDialog> {
    Q_OBJECT

public:
    explicit AsciiRegularDialog(QWidget *parent = nullptr);

protected:
    /// Proposes the output size, too.
    void showBoundaries() override;
    bool asciiToImage() override;
};
