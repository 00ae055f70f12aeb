#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_filesdialog.h"

/// Sets blue to 1 where it is 0, so that no pixel of a file is taken for a nodal
/// point by the import of irregular meshes.
class ChangeBlue0PixelsDialog : public ToolForm<Ui::FilesDialog> {
    Q_OBJECT

public:
    explicit ChangeBlue0PixelsDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
};
