#include "tooldialogs/convolutiondialog.h"

#include "raster/imagefile.h"
#include "tools/convolution.h"

ConvolutionDialog::ConvolutionDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    // Users know this window by this caption, though it opens a file.
    addInput(lineEditKernelFile,
             {.caption = tr("Save File"),
              .mayTake = [this](const QString &name) { return kernelCanBeUsed(name); }});
}

bool ConvolutionDialog::loadKernel(const QString &fileName, QImage &kernel,
                                   QString *error)
{
    kernel = loadImageFile(fileName);
    if (kernel.isNull()) {
        *error = couldNotOpen(fileName);
        return false;
    }
    if (!kernelFits(kernel.size())) {
        *error = tr("The kernel file \"%1\" is too large.\n"
                    "Allowed overall number of pixels (width x heidth): 16384.")
                     .arg(fileName);
        return false;
    }
    return true;
}

bool ConvolutionDialog::kernelCanBeUsed(const QString &fileName)
{
    QImage kernel;
    QString error;
    const bool usable = loadKernel(fileName, kernel, &error);
    if (!usable)
        showError(error);
    return usable;
}

bool ConvolutionDialog::work(QString *error)
{
    const QImage image = loadImageFile(lineEditFromFile->text());
    if (image.isNull()) {
        *error = couldNotOpen(lineEditFromFile->text());
        return false;
    }
    QImage kernel;
    return loadKernel(lineEditKernelFile->text(), kernel, error) &&
           save(convolve(image, kernel), lineEditToFile->text(), error);
}
