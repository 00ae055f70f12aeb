#include "tooldialogs/convolutiondialog.h"

#include "tools/toolfiles.h"

ConvolutionDialog::ConvolutionDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    // Users know this window by this caption, though it opens a file.
    addInput(lineEditKernelFile,
             {.caption = tr("Save File"),
              .mayTake = [this](const QString &name) { return kernelCanBeUsed(name); }});
}

bool ConvolutionDialog::kernelCanBeUsed(const QString &fileName)
{
    const Result<QImage> kernel = openKernel(fileName);
    if (!kernel)
        showError(kernel.error().text);
    return kernel.has_value();
}

Result<QImage> ConvolutionDialog::work(Progress &progress)
{
    qint64 cut = 0;
    Result<QImage> image = convolveFile(lineEditFromFile->text(),
                                        lineEditKernelFile->text(), progress, &cut);
    noteCut(cut);
    return image;
}
