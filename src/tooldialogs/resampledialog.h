#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_resampledialog.h"

#include <QIcon>

/// Changes the size of an elevation file and the scale of its values.
class ResampleDialog : public ToolForm<Ui::ResampleDialog> {
    Q_OBJECT

public:
    explicit ResampleDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    // Tells the user of a file that is no image.
    [[nodiscard]] bool showSizeOf(const QString &fileName);
    void doubleSpinBoxPercentXValueChanged(double percent);
    void doubleSpinBoxPercentYValueChanged(double percent);
    void spinBoxPixelXValueChanged(int pixels);
    void spinBoxPixelYValueChanged(int pixels);
    void pushButtonConnectedClicked();

    void setSource(const QSize &size);
    // Fields that follow another one; what they hold they do not tell.
    void setPercentX(double percent);
    void setPercentY(double percent);
    void setPixelX(int pixels);
    void setPixelY(int pixels);

    int m_sourceWidth = -1; // none chosen yet
    int m_sourceHeight = -1;
    bool m_connected = true; // x and y keep their ratio
    QIcon m_connectedIcon;
    QIcon m_disconnectedIcon;
};
