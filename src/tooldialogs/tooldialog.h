#pragma once

#include "views/converterdialog.h"

class QImage;

/// What the dialogs of the raster tools have in common: OK works under the wait
/// cursor, a failure is told in a box "Error" and leaves the dialog open, so that
/// other files can be chosen, and a success closes it.
class ToolDialog : public ConverterDialog {
    Q_OBJECT

public:
    void accept() override;

protected:
    explicit ToolDialog(QWidget *parent);

    /// Reads, computes and writes. On failure nothing is written, and `error`
    /// tells why.
    [[nodiscard]] virtual bool work(QString *error) = 0;
    /// Tells the user of a success, before the dialog closes.
    virtual void tellResult() {}

    [[nodiscard]] static QString couldNotOpen(const QString &fileName);
    [[nodiscard]] static QString couldNotLoad(const QString &fileName);
    /// Writes an image; `error` tells that this failed.
    [[nodiscard]] static bool save(const QImage &image, const QString &fileName,
                                   QString *error);
};

/// A tool's dialog on its form.
template <class Form> using ToolForm = FormDialog<Form, ToolDialog>;
