#include "terraindialogs/openterraindialog.h"

#include "terraindialogs/terrainmap.h"
#include "terraindialogs/terraintexts.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>

OpenTerrainDialog::OpenTerrainDialog(TerrainSourceMaker make, QWidget *parent)
    : TerrainJobDialog(std::move(make), parent)
{
    setupUi(this);
    connectFiles();
    connectPart();
    connectTexture();
    connectPoints();
    connectJobs();
    connect(pushButtonBrowseOut, &QPushButton::clicked, this,
            &OpenTerrainDialog::browseOut);
    connect(lineEditOut, &QLineEdit::textChanged, this, &OpenTerrainDialog::enableFields);
    setUpForm();
    alignLabels(tabTexture);
    terrainMapView->setMessage(emptyText());
    enableFields();
}

QString OpenTerrainDialog::emptyText()
{
    return tr("Drop elevation files here, or add them on the right.");
}

void OpenTerrainDialog::connectJobs()
{
    connect(&jobs(), &TerrainJobs::opened, this, [this](const TerrainFacts &facts) {
        m_facts = facts;
        showFacts();
    });
    connect(&jobs(), &TerrainJobs::mapDrawn, this, &OpenTerrainDialog::showMap);
    connect(&jobs(), &TerrainJobs::scanned, this, &OpenTerrainDialog::showScan);
    connect(&jobs(), &TerrainJobs::planned, this, &OpenTerrainDialog::showGrid);
    connect(&jobs(), &TerrainJobs::planFailed, this, [this](const QString &reason) {
        m_grid.reset();
        labelPart->setText(reason);
        enableFields();
    });
    connect(&jobs(), &TerrainJobs::failed, this, &OpenTerrainDialog::showFailure);
    connect(&jobs(), &TerrainJobs::written, this, [this](const TerrainReport &report) {
        endWork();
        emit sceneryWritten(report);
        QDialog::accept();
    });
}

void OpenTerrainDialog::setFiles(const QStringList &files)
{
    listWidgetFiles->clear();
    addFiles(files);
}

void OpenTerrainDialog::addFiles(const QStringList &files)
{
    for (const QString &file : files) {
        const QString absolute = QFileInfo(file).absoluteFilePath();
        auto *const item = new QListWidgetItem(QFileInfo(absolute).fileName());
        item->setData(Qt::UserRole, absolute);
        item->setToolTip(QDir::toNativeSeparators(absolute));
        listWidgetFiles->addItem(item);
    }
    forgetPoints();
    reopen();
}

QStringList OpenTerrainDialog::listed(const QListWidget *list) const
{
    QStringList files;
    for (int row = 0; row < list->count(); ++row)
        files << list->item(row)->data(Qt::UserRole).toString();
    return files;
}

void OpenTerrainDialog::reopen()
{
    m_facts.reset();
    m_scan.reset();
    m_grid.reset();
    m_overview.reset();
    m_takesRect = false;
    terrainMapView->setTerrain({}, 1.0);
    labelFacts->clear();
    // A blank keeps the place, so that the map does not change its size.
    labelPart->setText(QStringLiteral(" "));
    labelUnderMouse->setText(QStringLiteral(" "));
    const QStringList files = listed(listWidgetFiles);
    proposeOut();
    enableFields();
    m_openedAs = pointOptions();
    m_failure = files.isEmpty() ? QString() : columnsFault();
    if (files.isEmpty() || !m_failure.isEmpty()) {
        terrainMapView->setMessage(m_failure.isEmpty() ? emptyText() : m_failure);
        return jobs().stop();
    }
    terrainMapView->setMessage(tr("Opening..."));
    showBusy(true);
    jobs().open(files, m_openedAs);
    askForGrid();
}

void OpenTerrainDialog::proposeOut()
{
    // A name that the user has typed stays.
    if (listWidgetFiles->count() == 0 ||
        (!lineEditOut->text().isEmpty() && lineEditOut->text() != m_proposedOut))
        return;
    const QFileInfo first(listWidgetFiles->item(0)->data(Qt::UserRole).toString());
    QString folder = first.absolutePath();
    if (!QFileInfo(folder).isWritable())
        folder = QDir::homePath();
    m_proposedOut = QDir::toNativeSeparators(
        folder + QLatin1Char('/') +
        (first.isDir() ? first.fileName() : first.completeBaseName()));
    lineEditOut->setText(m_proposedOut);
}

void OpenTerrainDialog::showFacts()
{
    terrainMapView->setTerrain(m_facts->size, metresShape(*m_facts));
    labelFacts->setText(factsText(*m_facts, m_scan));
    showCells({});
    enableFields();
}

void OpenTerrainDialog::showScan(const TerrainScan &scan)
{
    m_scan = scan;
    labelFacts->setText(factsText(*m_facts, m_scan));
}

void OpenTerrainDialog::showMap(const QImage &map,
                                const std::shared_ptr<const Heights> &overview)
{
    m_overview = overview;
    terrainMapView->setMap(map);
}

void OpenTerrainDialog::showFailure(const QString &reason)
{
    if (isWorking())
        return endWork(reason);
    m_failure = reason.isEmpty() ? tr("Stopped.") : reason;
    terrainMapView->setMessage(m_failure);
}

void OpenTerrainDialog::enableFields()
{
    for (QWidget *const part :
         QList<QWidget *>{listWidgetFiles, pushButtonAddFiles, pushButtonAddFolder,
                          pushButtonRemoveFile, tabWidget, terrainMapView, lineEditOut,
                          pushButtonBrowseOut})
        part->setEnabled(!isWorking());
    enablePoints();
    const bool hasPalette = listWidgetPhoto->count() == 0;
    texturePanel->setPaletteUsed(hasPalette);
    doubleSpinBoxFill->setEnabled(checkBoxFill->isChecked());
    pushButtonOK->setEnabled(m_facts && m_grid && !isWorking() &&
                             !lineEditOut->text().trimmed().isEmpty());
}

void OpenTerrainDialog::accept()
{
    if (!pushButtonOK->isEnabled())
        return;
    if (const QString missing = texturePanel->missing(); !missing.isEmpty())
        return endWork(missing);
    startWork();
    jobs().write(request());
}

void OpenTerrainDialog::browseOut()
{
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Save Scenery As"), lineEditOut->text() + QStringLiteral(".zph"),
        tr("Sceneries (*.zph)"));
    if (name.isEmpty())
        return;
    const bool hasEnding = name.endsWith(QStringLiteral(".zph"), Qt::CaseInsensitive);
    lineEditOut->setText(QDir::toNativeSeparators(hasEnding ? name.chopped(4) : name));
}

void OpenTerrainDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && !isWorking())
        event->acceptProposedAction();
}

void OpenTerrainDialog::dropEvent(QDropEvent *event)
{
    QStringList files;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    addFiles(files);
}
