#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_maskdialog.h"

/// Lays a mask with an alpha channel over an image.
class MaskDialog : public ToolForm<Ui::MaskDialog> {
    Q_OBJECT

public:
    explicit MaskDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
};
