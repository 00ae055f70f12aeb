#include "tooldialogs/tooldialog.h"

#include "raster/imagefile.h"
#include "views/waitcursor.h"

#include <functional>
#include <utility>

namespace {

// The dialog stands still until the work ends, so nobody can stop it.
class ShownProgress : public Progress {
public:
    explicit ShownProgress(std::function<void(qint64, qint64)> show)
        : m_show(std::move(show))
    {
    }
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        m_show(done, of);
        return true;
    }

private:
    std::function<void(qint64, qint64)> m_show;
};

} // namespace

ToolDialog::ToolDialog(QWidget *parent) : ConverterDialog(tr("Error"), parent) {}

void ToolDialog::accept()
{
    const Result<QImage> done = workAndSave();
    if (!done)
        return showError(done.error().text);
    tellResult();
    ConverterDialog::accept();
}

Result<QImage> ToolDialog::workAndSave()
{
    const WaitCursor wait; // not over the boxes
    ShownProgress progress([this](qint64 row, qint64 of) { showProgress(row, of); });
    const Result<QImage> done = work(progress);
    if (done && !saveImageFile(*done, outputFile()))
        return failed(couldNotSave(outputFile()));
    if (done)
        noteOutput(*done);
    return done;
}

QString ToolDialog::couldNotSave(const QString &fileName) const
{
    return tr("Could not save file \"%1\".").arg(fileName);
}
