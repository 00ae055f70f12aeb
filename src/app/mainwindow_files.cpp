// Files that the program is given or that are dropped on it, and what other parts of the
// program read better than File, Open.

#include "app/fileroad.h"
#include "app/mainwindow.h"
#include "app/terrainopener.h"
#include "document/scenerymdichild.h"
#include "raster/heightkinds.h"
#include "scene/inputfile.h"
#include "views/statushints.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace {

QStringList localFiles(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

QString named(const QStringList &files)
{
    const QString first = QFileInfo(files.first()).fileName();
    return files.size() == 1
               ? MainWindow::tr("\"%1\"").arg(first)
               : MainWindow::tr("\"%1\" and %2 more").arg(first).arg(files.size() - 1);
}

} // namespace

// Files that are still being looked at.
struct MainWindow::GivenFiles {
    QStringList terrain; // in their order; the names of others are empty
    qsizetype unanswered = 0;
};

void MainWindow::setTerrainOpener(std::unique_ptr<TerrainOpener> opener)
{
    terrain = std::move(opener);
}

// Files for Open Terrain become one terrain, so they wait for each other.
void MainWindow::openGiven(const QStringList &paths)
{
    const auto given = std::make_shared<GivenFiles>();
    given->terrain.resize(paths.size());
    given->unanswered = 1;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const QString &path = paths[i];
        switch (roadOf(path, lookAt(path), activeScenery() != nullptr)) {
        case FileRoad::Open:
            open(path);
            break;
        case FileRoad::Terrain:
            given->terrain[i] = path;
            break;
        case FileRoad::Track:
            openTrack(path);
            break;
        case FileRoad::AskTerrain:
            askTerrain(path, i, given);
            break;
        }
    }
    answered(given);
}

void MainWindow::askTerrain(const QString &path, qsizetype place,
                            const std::shared_ptr<GivenFiles> &given)
{
    if (!terrain)
        return open(path);
    ++given->unanswered;
    terrain->askWhetherRead(path, [=, window = QPointer(this)](bool reads) {
        if (!window)
            return;
        if (reads)
            given->terrain[place] = path;
        else
            window->open(path);
        window->answered(given);
    });
}

void MainWindow::answered(const std::shared_ptr<GivenFiles> &given)
{
    if (--given->unanswered > 0)
        return;
    given->terrain.removeAll(QString());
    if (!given->terrain.isEmpty())
        openTerrain(given->terrain);
}

void MainWindow::openTerrain(const QStringList &files)
{
    if (terrain)
        return terrain->openTerrain(files);
    StatusHint hint{.text = tr("%1: Open Terrain is missing; it needs the library GDAL "
                               "(package libgdal32).")
                                .arg(named(files)),
                    .subject = QStringLiteral("terrain")};
    const QStringList pictures = files.filter(QStringLiteral(".tif"));
    if (!pictures.isEmpty()) {
        hint.button = tr("Open as &Picture");
        hint.buttonHelp = tr("Opens the file as File, Open does.");
        hint.act = [this, pictures] {
            for (const QString &picture : pictures)
                open(picture);
        };
    }
    tellHint(hint);
}

void MainWindow::openTrack(const QString &file)
{
    if (terrain)
        return terrain->openTrack(file);
    tellHint(
        {.text = tr("%1: flight paths from tracks are missing; they need the library "
                    "GDAL (package libgdal32).")
                     .arg(named({file})),
         .subject = QStringLiteral("terrain")});
}

void MainWindow::offerTerrain(const QString &file)
{
    if (!terrain || !QFileInfo::exists(file))
        return;
    terrain->askWhetherRead(file, [file, window = QPointer(this)](bool reads) {
        if (reads && window)
            window->tellHint({.text = tr("Open Terrain reads %1.").arg(named({file})),
                              .button = tr("Open &Terrain..."),
                              .buttonHelp = tr("Opens the file in Open Terrain."),
                              .act = [file, window] { window->openTerrain({file}); },
                              .subject = QStringLiteral("terrain")});
    });
}

// --- Drops -----------------------------------------------------------------------

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList files = localFiles(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    // The program that the files come from waits for the end of the drop, and a file
    // that cannot be opened is told of in a box.
    QMetaObject::invokeMethod(
        this, [this, files] { openGiven(files); }, Qt::QueuedConnection);
}

// --- Elevations ------------------------------------------------------------------

void MainWindow::watchElevationFile(SceneryMdiChild *view)
{
    constexpr int Settled = 200; // ms without a key
    auto *const field =
        view->findChild<QLineEdit *>(QStringLiteral("lineEditElevationFile"));
    auto *const timer = new QTimer(view);
    timer->setSingleShot(true);
    timer->setInterval(Settled);
    const QString subject = QStringLiteral("elevation %1").arg(quintptr(view));
    connect(field, &QLineEdit::textChanged, timer, qOverload<>(&QTimer::start));
    connect(view, &QObject::destroyed, hints,
            [this, subject] { hints->withdraw(subject); });
    connect(timer, &QTimer::timeout, view, [this, view, field, subject] {
        const QString file =
            findInputFile(field->text(), QFileInfo(view->currentFile()).absolutePath());
        const QString text = otherHeightsNotice(file);
        if (text.isEmpty())
            return hints->withdraw(subject);
        StatusHint hint{.text = text, .subject = subject};
        if (terrain) {
            hint.button = tr("Open &Terrain...");
            hint.buttonHelp = tr("Opens the file in Open Terrain.");
            hint.act = [this, file] { openTerrain({file}); };
        }
        tellHint(hint);
    });
}
