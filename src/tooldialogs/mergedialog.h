#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/merge.h"
#include "ui_mergedialog.h"

/// Adds or multiplies two images pixel by pixel.
class MergeDialog : public ToolForm<Ui::MergeDialog> {
    Q_OBJECT

public:
    explicit MergeDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] bool work(QString *error) override;
    [[nodiscard]] MergeOptions optionsFromForm() const;
};
