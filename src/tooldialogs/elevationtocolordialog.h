#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_elevationtocolordialog.h"

#include <QImage>

class ElevationImage;

/// Makes a false colour file of an elevation file and a palette.
class ElevationToColorDialog : public ToolForm<Ui::ElevationToColorDialog> {
    Q_OBJECT

public:
    explicit ElevationToColorDialog(QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    void checkBoxIgnoreZeroValuesClicked();
    // Tells the user of a file that is no image.
    [[nodiscard]] bool showRangeOrError(const QString &fileName);
    // Loads a palette and shows it; the same.
    [[nodiscard]] bool choosePalette(const QString &fileName);
    // False if the file is no image.
    bool showRangeOf(const QString &fileName);
    // Shows the range of the image's elevations and proposes it for the mapping.
    void updateElevationRange(const ElevationImage &image);
    void showPalette();

    QImage palette; // the loaded file; null before one is chosen
};
