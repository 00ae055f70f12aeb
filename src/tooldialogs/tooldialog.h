#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "views/converterdialog.h"

#include <QImage>

/// What the dialogs of the raster tools have in common: OK works under the wait
/// cursor, a failure is told in a box "Error" and leaves the dialog open, so that
/// other files can be chosen, and a success closes it.
class ToolDialog : public ConverterDialog {
    Q_OBJECT

public:
    void accept() override;

protected:
    explicit ToolDialog(QWidget *parent);

    /// Reads and computes what is to be written. On failure nothing is written; a null
    /// picture cannot be.
    [[nodiscard]] virtual Result<QImage> work(Progress &progress) = 0;
    /// Shows how far the work is.
    virtual void showProgress(qint64 /*done*/, qint64 /*of*/) {}
    /// Why the output could not be written.
    [[nodiscard]] virtual QString couldNotSave(const QString &fileName) const;
    /// Tells the user of a success, before the dialog closes.
    virtual void tellResult() {}

private:
    [[nodiscard]] Result<QImage> workAndSave();
};

/// A tool's dialog on its form.
template <class Form> using ToolForm = FormDialog<Form, ToolDialog>;
