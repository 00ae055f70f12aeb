#include "importdialogs/asciimeshdialog.h"

#include "views/waitcursor.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

#include <functional>
#include <utility>

namespace {

// Shows the boundaries as they widen; nobody can stop the scan.
class BoundariesShown : public Progress {
public:
    explicit BoundariesShown(std::function<void()> show) : m_show(std::move(show)) {}
    [[nodiscard]] bool step(qint64, qint64) override
    {
        m_show();
        return true;
    }

private:
    std::function<void()> m_show;
};

} // namespace

AsciiMeshDialog::AsciiMeshDialog(const QString &messageTitle, QWidget *parent)
    : ConverterDialog(messageTitle, parent)
{
    setHolds(OperationOutcome::Holds::Heights);
}

void AsciiMeshDialog::setUpForm()
{
    ConverterDialog::setUpForm();
    const auto field = [this](const char *name) {
        return findChild<QLineEdit *>(QLatin1String(name));
    };
    m_widgets = {field("lineEditFromFile"),
                 field("lineEditBoundaryTop"),
                 field("lineEditBoundaryBottom"),
                 field("lineEditBoundaryLeft"),
                 field("lineEditBoundaryRight"),
                 findChild<QSpinBox *>(QStringLiteral("spinBoxSkip")),
                 findChild<QListWidget *>(QStringLiteral("listWidgetResults"))};
    addInput(
        m_widgets.fromFile,
        {.filter = tr("Text Files (*.txt);;Data Files (*.dat *.asc);;All Files (*.*)"),
         .taken = [this](const QString &name) { scanFile(name); }});
}

void AsciiMeshDialog::scanFile(const QString &fileName)
{
    m_widgets.results->clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return showCouldNotOpen(fileName);
    const WaitCursor wait;
    BoundariesShown progress([this] {
        // Showing again what is shown is what would cost the time.
        if (!(m_boundaries == m_shown))
            showBoundaries();
        m_shown = m_boundaries;
    });
    const MeshScan scan =
        scanTextMesh(file, m_widgets.skip->value(), m_boundaries, progress)
            .value_or(MeshScan());
    showBoundaries();
    m_shown = m_boundaries;
    showRows(scanRows(scan));
}

void AsciiMeshDialog::showBoundaries()
{
    const auto text = [](double value) { return QString::number(value, 'g', 6); };
    m_widgets.left->setText(text(m_boundaries.minX));
    m_widgets.right->setText(text(m_boundaries.maxX));
    m_widgets.top->setText(text(m_boundaries.maxY));
    m_widgets.bottom->setText(text(m_boundaries.minY));
}

QStringList AsciiMeshDialog::scanRows(const MeshScan &scan) const
{
    return zeroTripleWarnings(scan, m_widgets.skip->value());
}

bool AsciiMeshDialog::openInput(QFile &file)
{
    file.setFileName(m_widgets.fromFile->text());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        showCouldNotOpen(file.fileName());
        return false;
    }
    m_widgets.results->clear();
    return true;
}

void AsciiMeshDialog::showRows(const QStringList &rows)
{
    m_widgets.results->addItems(rows);
}

void AsciiMeshDialog::accept()
{
    asciiToImage();
    QDialog::accept();
}
