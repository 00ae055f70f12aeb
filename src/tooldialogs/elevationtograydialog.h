#pragma once

#include "raster/elevationimage.h"
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
    void elevationToGray(ElevationImage &image, bool normalize);
    [[nodiscard]] bool userWantsNormalization();

    GrayConversion m_conversion; // counts and range of the last pass
    ElevationImage m_image;      // converted and not yet saved
};
