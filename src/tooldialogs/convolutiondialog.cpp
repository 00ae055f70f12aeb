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

Result<QImage> ConvolutionDialog::loadKernel(const QString &fileName)
{
    QImage kernel = loadImageFile(fileName);
    if (kernel.isNull())
        return failed(couldNotOpen(fileName));
    if (!kernelFits(kernel.size()))
        return failed(tr("The kernel file \"%1\" is too large.\n"
                         "Allowed overall number of pixels (width x heidth): 16384.")
                          .arg(fileName));
    return kernel;
}

bool ConvolutionDialog::kernelCanBeUsed(const QString &fileName)
{
    const Result<QImage> kernel = loadKernel(fileName);
    if (!kernel)
        showError(kernel.error().text);
    return kernel.has_value();
}

Result<QImage> ConvolutionDialog::work(Progress &progress)
{
    const Result<QImage> image = loadPicture(lineEditFromFile);
    if (!image)
        return image;
    const Result<QImage> kernel = loadKernel(lineEditKernelFile->text());
    if (!kernel)
        return kernel;
    // What memory was short for cannot be saved, and that is told.
    return convolve(*image, *kernel, progress).value_or(QImage());
}
