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

bool MergeDialog::work(QString *error)
{
    const QImage first = loadImageFile(lineEditFile1->text());
    if (first.isNull()) {
        *error = couldNotLoad(lineEditFile1->text());
        return false;
    }
    const QImage second = loadImageFile(lineEditFile2->text());
    if (second.isNull()) {
        *error = couldNotLoad(lineEditFile2->text());
        return false;
    }
    const QImage merged = merge(first, second, optionsFromForm());
    const bool saved = saveImageFile(merged, lineEditToFile->text());
    if (!saved)
        *error = tr("Could not save image file \"%1\".").arg(lineEditToFile->text());
    return saved;
}
