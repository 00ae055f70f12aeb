#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/elevationconversions.h"
#include "ui_filesdialog.h"

/// Makes an elevation file of an image: an elevation is the sum of a pixel's
/// red, green and blue.
class GrayToElevationDialog : public ToolForm<Ui::FilesDialog> {
    Q_OBJECT

public:
    explicit GrayToElevationDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    void tellResult() override;

    ElevationLimits m_range; // of the last conversion
};
