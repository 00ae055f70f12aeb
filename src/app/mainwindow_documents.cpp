#include "app/mainwindow.h"

#include "app/menutext.h"
#include "app/newfiledialog.h"
#include "app/recentfiles.h"
#include "base/appsettings.h"
#include "document/scenerymdichild.h"
#include "ui_mainwindow.h"
#include "views/imagemdichild.h"
#include "views/statushints.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>

#include <algorithm>
#include <array>
#include <new>

namespace {

constexpr int MessageTime = 2000; // ms
constexpr QSize NewScenerySize(400, 300);

bool namesScenery(const QString &path)
{
    return path.right(3).toUpper() == QLatin1String("ZPH");
}

// The toolkit gives each window a Close entry with a shortcut of its own. Beside the
// main menu's that would be ambiguous, and the key would do nothing at all.
void leaveShortcutsToMainMenu(const QMdiSubWindow *window)
{
    if (const QMenu *const menu = window->systemMenu()) {
        for (QAction *action : menu->actions())
            action->setShortcuts(QList<QKeySequence>());
    }
}

// A window larger than the workspace would be placed with its title and left part
// out of sight.
void showView(MdiChild *view)
{
    view->show();
    QWidget *const window = view->parentWidget();
    window->move(std::max(window->x(), 0), std::max(window->y(), 0));
}

void resizeView(MdiChild *view, const QSize &size)
{
    QWidget *const window = view->parentWidget();
    if (!window->isMaximized()) // with another one maximized, this one is too
        window->resize(size + (window->size() - view->size()));
}

} // namespace

// --- Views -----------------------------------------------------------------------

QMdiSubWindow *MainWindow::addToWorkspace(MdiChild *view)
{
    QMdiSubWindow *const window = mdiArea->addSubWindow(view);
    leaveShortcutsToMainMenu(window);
    window->setWindowFlag(Qt::WindowContextHelpButtonHint);
    // A view may close by itself; its window must not stay behind empty.
    connect(view, &QObject::destroyed, window, &QObject::deleteLater);
    return window;
}

ImageMdiChild *MainWindow::createImageView()
{
    auto *const view = new ImageMdiChild(this);
    connect(ui->action_ZoomIn, &QAction::triggered, view, &ImageMdiChild::slotZoomIn);
    connect(ui->action_ZoomOut, &QAction::triggered, view, &ImageMdiChild::slotZoomOut);
    connect(ui->action_NormalSize, &QAction::triggered, view,
            &ImageMdiChild::slotNormalSize);
    connect(ui->action_FitToWindow, &QAction::triggered, view,
            &ImageMdiChild::slotFitToWindow);
    connect(addToWorkspace(view), &QMdiSubWindow::windowStateChanged, this,
            &MainWindow::testWindowStateChanged);
    watchHeights(view);
    return view;
}

SceneryMdiChild *MainWindow::createSceneryView()
{
    auto *const view = new SceneryMdiChild(this, ui->action_ZoomIn, ui->action_ZoomOut,
                                           ui->action_NormalSize, ui->action_FitToWindow);
    connect(view, &SceneryMdiChild::pictureMade, this,
            [this, view](ImageMdiChild *picture) { addRunKeys(view, picture); });
    connect(view, &SceneryMdiChild::extrasTold, this, [this](const QStringList &told) {
        if (told.isEmpty())
            hints->withdraw(QStringLiteral("extras"));
        else
            tellHint({.text = told.join(QLatin1Char(' ')),
                      .subject = QStringLiteral("extras")});
    });
    addToWorkspace(view);
    watchElevationFile(view);
    return view;
}

QMdiSubWindow *MainWindow::findMdiChild(const QString &file) const
{
    const QString path = QFileInfo(file).canonicalFilePath();
    if (path.isEmpty())
        return nullptr;
    for (QMdiSubWindow *window : mdiArea->subWindowList()) {
        const auto *view = qobject_cast<MdiChild *>(window->widget());
        if (view && view->currentFile() == path)
            return window;
    }
    return nullptr;
}

// --- New and open ----------------------------------------------------------------

void MainWindow::newFile()
{
    hints->dismiss();
    NewFileDialog dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (dialog.createImageFile()) {
        ImageMdiChild *const view = createImageView();
        view->newFile(dialog.imageFileSize());
        showView(view);
        return;
    }
    SceneryMdiChild *const view = createSceneryView();
    view->newFile();
    showView(view);
    resizeView(view, NewScenerySize);
}

void MainWindow::open()
{
    AppSettings settings;
    QString filter = settings
                         .value(QStringLiteral("selectedFilter"),
                                QStringLiteral("Scenery File (*.zph)"))
                         .toString();
    const QString folder =
        settings.value(QStringLiteral("mostRecentAbsolutePath")).toString();
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open File"), folder,
        tr("Image File (*.bmp *.jpg *.png *.ppm *.tga *.tif);;Scenery File (*.zph)"),
        &filter);
    if (path.isEmpty())
        return;
    settings.setValue(QStringLiteral("selectedFilter"), filter);
    settings.setValue(QStringLiteral("mostRecentAbsolutePath"),
                      QFileInfo(path).absolutePath());
    open(path);
}

bool MainWindow::load(MdiChild *view, const QString &path)
{
    try {
        return view->loadFile(path);
    } catch (const std::bad_alloc &) {
        QMessageBox::critical(
            this, tr("Error"),
            tr("There is not enough memory to open file \"%1\".").arg(path));
        return false;
    }
}

void MainWindow::open(const QString &path)
{
    hints->dismiss();
    if (QMdiSubWindow *const window = findMdiChild(path)) {
        revert(window, path);
        return;
    }
    MdiChild *view = nullptr;
    if (namesScenery(path))
        view = createSceneryView();
    else
        view = createImageView();
    if (!load(view, path)) {
        view->parentWidget()->close(); // asks the view, and leaves no empty window
        offerTerrain(path);
        return;
    }
    addToMRU(path);
    showMessage(tr("File loaded"), MessageTime);
    connect(view, &QObject::destroyed, this, &MainWindow::mdiChildDestroyed);
    ui->action_Copy->setEnabled(true);
    showView(view);
    // The form could do with less room, and would be given no more than a small workspace
    // has.
    if (qobject_cast<SceneryMdiChild *>(view))
        resizeView(view, view->sizeHint());
}

void MainWindow::revert(QMdiSubWindow *window, const QString &path)
{
    auto *const view = qobject_cast<MdiChild *>(window->widget());
    if (view->isModified()) {
        const auto answer = QMessageBox::warning(
            this, tr("Revert File"),
            tr("By reverting the file to the state saved on disk, you will lose all "
               "changes.\nOK to revert?"),
            QMessageBox::Yes | QMessageBox::No);
        if (answer == QMessageBox::Yes && load(view, path)) {
            addToMRU(path);
            showMessage(tr("File loaded"), MessageTime);
            ui->action_Copy->setEnabled(true);
        }
    }
    mdiArea->setActiveSubWindow(window);
}

// --- Save ------------------------------------------------------------------------

void MainWindow::save()
{
    hints->dismiss();
    MdiChild *const view = activeMdiChild();
    if (view && view->save())
        showMessage(tr("File saved"), MessageTime);
}

void MainWindow::saveAs()
{
    hints->dismiss();
    MdiChild *const view = activeMdiChild();
    if (!view || !view->saveAs())
        return;
    addToMRU(view->currentFile());
    showMessage(tr("File saved"), MessageTime);
}

// --- Recent files ----------------------------------------------------------------

void MainWindow::addToMRU(const QString &file)
{
    RecentFiles files = RecentFiles::read();
    files.addFirst(file);
    showRecent(files);
    files.write();
}

std::array<QAction *, 4> MainWindow::recentActions() const
{
    return {ui->action_OpenMRU1, ui->action_OpenMRU2, ui->action_OpenMRU3,
            ui->action_OpenMRU4};
}

// Entries only ever appear; none is hidden while the program runs.
void MainWindow::showRecent(const RecentFiles &files)
{
    const auto actions = recentActions();
    for (size_t i = 0; i < actions.size(); ++i) {
        actions[i]->setText(files.names[i]);
        actions[i]->setData(files.names[i]);
        if (!files.names[i].isEmpty())
            actions[i]->setVisible(true);
    }
}

void MainWindow::spellRecent(bool inMenu)
{
    for (QAction *action : recentActions()) {
        const QString path = action->data().toString();
        action->setText(inMenu ? menuText(path) : path);
    }
}

void MainWindow::openRecent(int index)
{
    const QString file = RecentFiles::read().names[size_t(index)];
    if (!file.isEmpty())
        open(file);
}

void MainWindow::openMRU1() { openRecent(0); }

void MainWindow::openMRU2() { openRecent(1); }

void MainWindow::openMRU3() { openRecent(2); }

void MainWindow::openMRU4() { openRecent(3); }
