#include "tooldialogs/mergedialog.h"

#include "raster/imagefile.h"

MergeDialog::MergeDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFile1);
    addInput(lineEditFile2);
}

MergeOptions MergeDialog::optionsFromForm() const
{
    MergeOptions options;
    options.mode = radioButtonMultiply->isChecked() ? MergeOptions::Mode::Multiply
                                                    : MergeOptions::Mode::Add;
    options.bias1 = doubleSpinBoxBias1->value();
    options.bias2 = doubleSpinBoxBias2->value();
    return options;
}

Result<QImage> MergeDialog::work(Progress &progress)
{
    const QImage first = loadImageFile(lineEditFile1->text());
    if (first.isNull())
        return failed(couldNotLoad(lineEditFile1->text()));
    const QImage second = loadImageFile(lineEditFile2->text());
    if (second.isNull())
        return failed(couldNotLoad(lineEditFile2->text()));
    // What memory was short for cannot be saved, and that is told.
    return merge(first, second, optionsFromForm(), progress).value_or(QImage());
}

QString MergeDialog::couldNotSave(const QString &fileName) const
{
    return tr("Could not save image file \"%1\".").arg(fileName);
}
