#pragma once

#include "tooldialogs/tooldialog.h"
#include "ui_convolutiondialog.h"

/// Filters an image with a kernel that is an image itself.
class ConvolutionDialog : public ToolForm<Ui::ConvolutionDialog> {
    Q_OBJECT

public:
    explicit ConvolutionDialog(QWidget *parent = nullptr);

private:
    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    // Tells why it cannot.
    [[nodiscard]] bool kernelCanBeUsed(const QString &fileName);
};
