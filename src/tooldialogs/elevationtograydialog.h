#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/elevationconversions.h"
#include "ui_elevationtograydialog.h"

/// Makes a grayscale file of an elevation file, on demand spread over all grays.
class ElevationToGrayDialog : public ToolForm<Ui::ElevationToGrayDialog> {
    Q_OBJECT

public:
    explicit ElevationToGrayDialog(QWidget *parent = nullptr);

    void accept() override;

private:
    // Gives the converted image away.
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    // Loads the input afresh and converts it; false if it cannot be opened.
    [[nodiscard]] bool convert(bool normalize);
    [[nodiscard]] bool userWantsNormalization();

    GrayPicture m_gray; // of the last pass; not yet saved
};
