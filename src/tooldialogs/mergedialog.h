#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/merge.h"
#include "ui_mergedialog.h"

/// Adds or multiplies two images pixel by pixel.
class MergeDialog : public ToolDialog, private Ui::MergeDialog {
    Q_OBJECT

public:
    explicit MergeDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] bool work(QString *error) override;
    void pushButtonBrowseFile1Clicked();
    void pushButtonBrowseFile2Clicked();
    [[nodiscard]] MergeOptions optionsFromForm() const;
};
