#include "app/terrainwindows.h"

#include "app/mainwindow.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "terrain/pathtrack.h"
#include "terrain/terrainmodule.h"
#include "terrain/terrainreport.h"
#include "terraindialogs/openterraindialog.h"
#include "terraindialogs/pathfromtrackdialog.h"
#include "terraindialogs/terraintexts.h"
#include "terraindialogs/texturefromelevationdialog.h"
#include "views/imagemdichild.h"
#include "views/operationoutcome.h"
#include "views/statushints.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>

namespace {

Result<std::unique_ptr<TerrainSource>> load() { return loadTerrainSource(); }

QString folderOf(const SceneryMdiChild &scenery)
{
    const QString file = scenery.delegate().fileName();
    return file.isEmpty() ? QString() : QFileInfo(file).absolutePath();
}

} // namespace

TerrainWindows::TerrainWindows(MainWindow *window) : QObject(nullptr), m_window(window)
{
    addCommands();
    connect(m_window->findChild<QMdiArea *>(), &QMdiArea::subWindowActivated, this,
            &TerrainWindows::enableCommands);
    enableCommands();
}

TerrainWindows::~TerrainWindows() = default;

void TerrainWindows::addCommands()
{
    const auto add = [this](const char *menu, const char *before, const char *object,
                            const QString &text, const QString &help,
                            void (TerrainWindows::*slot)()) {
        auto *const action = new QAction(text, m_window);
        action->setObjectName(QLatin1String(object));
        action->setWhatsThis(help);
        action->setToolTip(help);
        m_window->findChild<QMenu *>(QLatin1String(menu))
            ->insertAction(m_window->findChild<QAction *>(QLatin1String(before)), action);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    add("menu_File", "action_Save", "action_OpenTerrain", tr("Open &Terrain..."),
        tr("To make a scenery from elevation files of any kind."),
        &TerrainWindows::openTerrainWindow);
    add("menuFormat_Conversions", "", "action_TextureFromElevation",
        tr("Te&xture from elevation..."),
        tr("To make a texture from an elevation file: colours by height and slope."),
        &TerrainWindows::textureFromElevation);
    m_pathFromTrack = add("menu_Edit", "action_Settings", "action_PathFromTrack",
                          tr("Path From &Track..."),
                          tr("To turn a track into the path of the scenery's flight."),
                          &TerrainWindows::pathFromTrack);
    m_savePathAs =
        add("menu_Edit", "action_Settings", "action_SavePathAs", tr("Save Path &As..."),
            tr("To save the flight of the scenery as a track or a table."),
            &TerrainWindows::savePathAs);
    m_window->findChild<QMenu *>(QStringLiteral("menu_Edit"))
        ->insertSeparator(
            m_window->findChild<QAction *>(QStringLiteral("action_Settings")));
}

void TerrainWindows::enableCommands()
{
    const bool has = scenery() != nullptr;
    m_pathFromTrack->setEnabled(has);
    m_savePathAs->setEnabled(has);
}

TerrainJobs &TerrainWindows::jobs()
{
    if (!m_jobs) {
        m_jobs = std::make_unique<TerrainJobs>(load);
        connect(m_jobs.get(), &TerrainJobs::failed, this, &TerrainWindows::tell);
    }
    return *m_jobs;
}

void TerrainWindows::tell(const QString &text)
{
    if (!text.isEmpty())
        m_window->tellHint({.text = text, .subject = QStringLiteral("terrain")});
}

void TerrainWindows::report(const TerrainReport &report, const QString &title,
                            const QString &file)
{
    OperationOutcome outcome;
    outcome.title = title;
    outcome.file = file;
    const auto add = [&outcome](const QString &name, const QString &value) {
        outcome.facts << OperationOutcome::Fact{name, value};
    };
    if (report.range)
        add(tr("Heights"), tr("%1 to %2 m")
                               .arg(shortNumber(report.range->first),
                                    shortNumber(report.range->second)));
    add(tr("Voids"), QString::number(report.voids));
    if (report.filled > 0)
        add(tr("Voids filled"), QString::number(report.filled));
    if (report.pointsRead > 0)
        add(tr("Points used"),
            tr("%1 of %2").arg(report.pointsUsed).arg(report.pointsRead));
    if (report.cut > 0)
        add(tr("Heights cut"), QString::number(report.cut));
    if (report.overlaps > 0)
        add(tr("Cells in several files"), QString::number(report.overlaps));
    if (report.gaps > 0)
        add(tr("Cells in no file"), QString::number(report.gaps));
    outcome.messages = report.notes;
    m_window->take(outcome);
}

SceneryMdiChild *TerrainWindows::scenery() const
{
    return qobject_cast<SceneryMdiChild *>(m_window->activeMdiChild());
}

void TerrainWindows::openTerrainWindow() { openTerrain({}); }

void TerrainWindows::openTerrain(const QStringList &files)
{
    if (!m_open) {
        m_open = new OpenTerrainDialog(load, m_window);
        m_open->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_open, &OpenTerrainDialog::sceneryWritten, this,
                [this](const TerrainReport &report) {
                    m_window->open(report.written.constLast());
                    this->report(report, tr("Open Terrain"), report.written.constFirst());
                });
    }
    m_open->show();
    m_open->raise();
    m_open->activateWindow();
    if (!files.isEmpty())
        m_open->setFiles(files);
}

void TerrainWindows::askWhetherRead(const QString &file,
                                    std::function<void(bool reads)> answer)
{
    const auto tell = [this, answer = std::move(answer)](bool reads) {
        QMetaObject::invokeMethod(this, [answer, reads] { answer(reads); });
    };
    jobs().run(
        [file, tell](TerrainSource &source, Progress &progress) {
            const bool reads = source.canOpen(file) ||
                               source.track(file, QString(), progress).has_value();
            tell(reads);
        },
        [tell](const Failure &) { tell(false); });
}

void TerrainWindows::askLibrary(std::function<void(const Result<QStringList> &)> answer)
{
    const auto tell = [this,
                       answer = std::move(answer)](const Result<QStringList> &about) {
        QMetaObject::invokeMethod(this, [answer, about] { answer(about); });
    };
    jobs().run([tell](TerrainSource &source, Progress &) { tell(source.about()); },
               [tell](const Failure &why) { tell(tl::unexpected(why)); });
}

QString TerrainWindows::elevationOfActive() const
{
    if (const SceneryMdiChild *const child = scenery()) {
        SceneryDelegate &delegate = child->delegate();
        return delegate.inputFile(delegate.shown().parameters.HDateiname);
    }
    if (const auto *const image =
            qobject_cast<ImageMdiChild *>(m_window->activeMdiChild()))
        return image->currentFile();
    return {};
}

void TerrainWindows::textureFromElevation()
{
    auto *const dialog = new TextureFromElevationDialog(m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &TextureFromElevationDialog::textureWritten, this,
            [this](const TerrainReport &report) {
                m_window->open(report.written.constFirst());
                this->report(report, tr("Texture From Elevation"),
                             report.written.constFirst());
            });
    dialog->setElevation(elevationOfActive());
    dialog->show();
}

void TerrainWindows::pathFromTrack() { openTrack({}); }

void TerrainWindows::openTrack(const QString &file)
{
    SceneryMdiChild *const child = scenery();
    if (!child || child->isRendering())
        return;
    auto *const dialog = new PathFromTrackDialog(child->delegate().shown(),
                                                 folderOf(*child), load, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (!file.isEmpty())
        dialog->setTrack(file);
    // The scenery may be closed while the window is open.
    connect(dialog, &PathFromTrackDialog::pathFound, child,
            [this, child](const SceneryDocument &flown, const QStringList &told) {
                takePath(*child, flown, told);
            });
    connect(child, &QObject::destroyed, dialog, &QWidget::close);
    dialog->show();
}

void TerrainWindows::takePath(SceneryMdiChild &child, const SceneryDocument &flown,
                              const QStringList &told)
{
    const bool asks = child.delegate().pathEditorHoldsChanges();
    const QPointer<SceneryMdiChild> still = &child; // while the box is open
    if (asks &&
        QMessageBox::question(m_window, tr("Path From Track"),
                              tr("The open path editor of \"%1\" holds changes.\nReplace "
                                 "them by the path of the track?")
                                  .arg(child.userFriendlyCurrentFile()),
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) != QMessageBox::Yes)
        return tell(tr("The path of the track was not taken."));
    if (!still)
        return;
    child.delegate().takePath(flown);
    tell(told.join(QStringLiteral("; ")));
}

void TerrainWindows::savePathAs()
{
    const SceneryMdiChild *const child = scenery();
    if (!child)
        return;
    const QString own = child->delegate().fileName();
    const QString name =
        own.isEmpty() ? QStringLiteral("path") : QFileInfo(own).completeBaseName();
    const QString proposed = QDir(folderOf(*child)).filePath(name);
    QString filter;
    QString file = QFileDialog::getSaveFileName(
        m_window, tr("Save Path As"), proposed + QStringLiteral(".gpx"),
        tr("GPX (*.gpx);;KML (*.kml);;Comma separated values (*.csv)"), &filter);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += filter.mid(filter.indexOf(QLatin1Char('*')) + 1, 4);
    writePath(file);
}

void TerrainWindows::writePath(const QString &file)
{
    SceneryMdiChild *const child = scenery();
    const SceneryDocument flown = child->delegate().shown();
    const QString folder = folderOf(*child);
    const QString name = QFileInfo(file).completeBaseName();
    const auto finish = [this, file](const Result<void> &written) {
        QMetaObject::invokeMethod(this, [this, file, written] {
            if (written)
                tell(tr("The path is saved in \"%1\".")
                         .arg(QDir::toNativeSeparators(file)));
            else if (!written.error().stopped)
                QMessageBox::critical(m_window, tr("Error"), written.error().text);
        });
    };
    if (file.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive)) {
        jobs().runAlone([=](Progress &progress) {
            finish(writePathTrack(flown, folder, name, file, nullptr, progress));
        });
        return;
    }
    jobs().run([=](TerrainSource &source, Progress &progress) {
        finish(writePathTrack(flown, folder, name, file, &source, progress));
    });
}
