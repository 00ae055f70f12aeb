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
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    [[nodiscard]] QString couldNotSave(const QString &fileName) const override;
    [[nodiscard]] MergeOptions optionsFromForm() const;
};
