#include "tooldialogs/mergedialog.h"

#include "tools/toolfiles.h"

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
    qint64 cut = 0;
    Result<QImage> image = mergeFiles(lineEditFile1->text(), lineEditFile2->text(),
                                      optionsFromForm(), progress, &cut);
    noteCut(cut);
    return image;
}

QString MergeDialog::couldNotSave(const QString &fileName) const
{
    return tr("Could not save image file \"%1\".").arg(fileName);
}
