#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/elevationconversions.h"
#include "ui_graytoelevationdialog.h"

/// Makes an elevation file of an image: an elevation is the sum of a pixel's
/// red, green and blue.
class GrayToElevationDialog : public ToolForm<Ui::GrayToElevationDialog> {
    Q_OBJECT

public:
    explicit GrayToElevationDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] bool work(QString *error) override;
    void tellResult() override;

    ElevationLimits m_range; // of the last conversion
};
