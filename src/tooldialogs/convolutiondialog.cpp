#include "tooldialogs/convolutiondialog.h"

#include "raster/imagefile.h"
#include "tools/convolution.h"

ConvolutionDialog::ConvolutionDialog(QWidget *parent) : ToolDialog(parent)
{
    setupUi(this);
    setUpFiles(pushButtonOK, pushButtonBrowseToFile, lineEditToFile,
               {lineEditFromFile, lineEditKernelFile});
    connect(pushButtonBrowseFromFile, &QPushButton::clicked, this,
            &ConvolutionDialog::pushButtonBrowseFromFileClicked);
    connect(pushButtonBrowseKernelFile, &QPushButton::clicked, this,
            &ConvolutionDialog::pushButtonBrowseKernelFileClicked);
}

void ConvolutionDialog::pushButtonBrowseFromFileClicked()
{
    browseToOpen(lineEditFromFile, imageFileFilter());
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

void ConvolutionDialog::pushButtonBrowseKernelFileClicked()
{
    // Users know this window by this caption, though it opens a file.
    const QString name = askToOpen(imageFileFilter(), tr("Save File"));
    if (name.isEmpty())
        return;
    QImage kernel;
    QString error;
    if (!loadKernel(name, kernel, &error))
        return showError(error);
    takeFile(lineEditKernelFile, name);
    validateOKButton();
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
