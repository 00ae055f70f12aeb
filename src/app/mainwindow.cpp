#include "app/mainwindow.h"

#include "app/menutext.h"
#include "app/recentfiles.h"
#include "app/terrainwindows.h"
#include "base/appsettings.h"
#include "base/notices.h"
#include "document/scenerymdichild.h"
#include "ui_mainwindow.h"
#include "views/imagemdichild.h"
#include "views/windowplace.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QWhatsThis>

namespace {

bool clipboardHasPixmap()
{
    const QClipboard *const clipboard = QApplication::clipboard();
    return clipboard && !clipboard->pixmap().isNull();
}

// Lets entries of the menus call slots of the receiver.
template <class Receiver> auto connectorTo(Receiver *receiver)
{
    return [receiver](QAction *action, void (Receiver::*slot)()) {
        QObject::connect(action, &QAction::triggered, receiver, slot);
    };
}

} // namespace

MainWindow::MainWindow() : ui(std::make_unique<Ui_MainWindow>())
{
    ui->setupUi(this);
    mdiArea = new QMdiArea;
    mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setAccessibleName(tr("Workspace"));
    mdiArea->setWhatsThis(tr("Here the windows of sceneries and pictures are opened."));
    setCentralWidget(mdiArea);
    addHeights();
    addDocks();
    addHints();
    addReports();
    setAcceptDrops(true);
    readSettings();
    separatorAction = new QAction(this);
    separatorAction->setSeparator(true);
    connectDocumentActions();
    connectViewAndRunActions();
    connectWindowActions();
    connectDialogActions();
    ui->action_FitToWindow->setCheckable(true);
    updateWindowMenu();
    ui->action_Copy->setEnabled(false);
    ui->action_Paste->setEnabled(false);

    for (QAction *action : recentActions())
        action->setVisible(false);
    showRecent(RecentFiles::read());
    setTerrainOpener(std::make_unique<TerrainWindows>(this));
}

MainWindow::~MainWindow()
{
    terrain.reset(); // it asks for the active view
    setNoticeSink({});
    // Views that are left use the zoom actions to their end, and area, windows and
    // views tell of it; by then there is no workspace to ask for its active view.
    mdiArea->disconnect(this);
    for (QObject *part : mdiArea->findChildren<QObject *>())
        part->disconnect(this);
    delete mdiArea;
}

// --- Connections -----------------------------------------------------------------

void MainWindow::connectDocumentActions()
{
    const auto on = connectorTo(this);
    on(ui->action_New, &MainWindow::newFile);
    on(ui->action_Open, &MainWindow::open);
    on(ui->action_Save, &MainWindow::save);
    on(ui->action_SaveAs, &MainWindow::saveAs);
    on(ui->action_OpenMRU1, &MainWindow::openMRU1);
    on(ui->action_OpenMRU2, &MainWindow::openMRU2);
    on(ui->action_OpenMRU3, &MainWindow::openMRU3);
    on(ui->action_OpenMRU4, &MainWindow::openMRU4);
    connect(ui->menu_File, &QMenu::aboutToShow, this, [this] { spellRecent(true); });
    connect(ui->menu_File, &QMenu::aboutToHide, this, [this] { spellRecent(false); });
    on(ui->action_SwitchLayoutDirection, &MainWindow::switchLayoutDirection);
    connect(ui->action_Exit, &QAction::triggered, qApp, &QApplication::closeAllWindows);
    on(ui->action_Copy, &MainWindow::copy);
    on(ui->action_Paste, &MainWindow::paste);
}

void MainWindow::connectViewAndRunActions()
{
    const auto on = connectorTo(this);
    on(ui->action_CopyFirstLast, &MainWindow::copyFirstLast);
    on(ui->action_CopyLastFirst, &MainWindow::copyLastFirst);
    on(ui->action_Preview, &MainWindow::renderPreview);
    on(ui->action_Final, &MainWindow::renderFinal);
    on(ui->action_Stop, &MainWindow::stopRendering);
}

void MainWindow::connectWindowActions()
{
    const auto on = connectorTo(mdiArea);
    on(ui->action_Close, &QMdiArea::closeActiveSubWindow);
    on(ui->action_CloseAll, &QMdiArea::closeAllSubWindows);
    on(ui->action_Tile, &QMdiArea::tileSubWindows);
    on(ui->action_Cascade, &QMdiArea::cascadeSubWindows);
    on(ui->action_Next, &QMdiArea::activateNextSubWindow);
    on(ui->action_Previous, &QMdiArea::activatePreviousSubWindow);
    connect(ui->action_WhatsThis, &QAction::triggered, this,
            [] { QWhatsThis::enterWhatsThisMode(); });
    connect(mdiArea, &QMdiArea::subWindowActivated, this, &MainWindow::updateMenus);
    connect(ui->menu_Window, &QMenu::aboutToShow, this, &MainWindow::updateWindowMenu);
}

// --- Active view -----------------------------------------------------------------

MdiChild *MainWindow::activeMdiChild() const
{
    const QMdiSubWindow *const window = mdiArea->activeSubWindow();
    if (!window)
        return nullptr;
    if (auto *scenery = qobject_cast<SceneryMdiChild *>(window->widget()))
        return scenery;
    return qobject_cast<ImageMdiChild *>(window->widget());
}

SceneryMdiChild *MainWindow::activeScenery() const
{
    return qobject_cast<SceneryMdiChild *>(activeMdiChild());
}

void MainWindow::showMessage(const QString &text, int timeoutMs)
{
    statusBar()->showMessage(text, timeoutMs);
}

QAction *MainWindow::getAction_FitToWindow() const { return ui->action_FitToWindow; }

void MainWindow::copy()
{
    MdiChild *const view = activeMdiChild();
    if (!view)
        return;
    view->copy();
    if (clipboardHasPixmap())
        ui->action_Paste->setEnabled(true);
}

void MainWindow::paste()
{
    if (MdiChild *const view = activeMdiChild())
        view->paste();
}

void MainWindow::copyFirstLast()
{
    if (SceneryMdiChild *const view = activeScenery())
        view->copyFirstLast();
}

void MainWindow::copyLastFirst()
{
    if (SceneryMdiChild *const view = activeScenery())
        view->copyLastFirst();
}

void MainWindow::switchLayoutDirection()
{
    QApplication::setLayoutDirection(
        layoutDirection() == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight);
}

// --- States of the entries -------------------------------------------------------

void MainWindow::updateMenus()
{
    MdiChild *const view = activeMdiChild();
    const bool has = view != nullptr;
    for (QAction *action :
         {ui->action_Save, ui->action_SaveAs, ui->action_Close, ui->action_CloseAll,
          ui->action_Tile, ui->action_Cascade, ui->action_Next, ui->action_Previous})
        action->setEnabled(has);
    ui->action_Paste->setEnabled(false);
    separatorAction->setVisible(has);
    if (auto *image = qobject_cast<ImageMdiChild *>(view))
        updateMenusForImage(image);
    else if (const auto *scenery = qobject_cast<SceneryMdiChild *>(view))
        updateMenusForScenery(scenery);
    else {
        enableZoom(false);
        enableRun(false);
        ui->action_Stop->setEnabled(false);
    }
    updateHeights();
}

void MainWindow::updateMenusForImage(ImageMdiChild *view)
{
    ui->action_Copy->setEnabled(true);
    ui->action_Paste->setEnabled(clipboardHasPixmap());
    enableZoom(true);
    enableRun(false);
    ui->action_Stop->setEnabled(false);
    view->updateActions();
}

void MainWindow::updateMenusForScenery(const SceneryMdiChild *view)
{
    ui->action_Copy->setEnabled(false);
    ui->action_Paste->setEnabled(false);
    const bool shows = view->hasChildren();
    enableZoom(shows);
    const bool runs = shows && view->isRendering();
    enableRun(!runs);
    ui->action_Stop->setEnabled(runs);
}

void MainWindow::enableZoom(bool enable)
{
    ui->action_ZoomIn->setEnabled(enable);
    ui->action_ZoomOut->setEnabled(enable);
    ui->action_NormalSize->setEnabled(enable);
    ui->action_FitToWindow->setEnabled(enable);
}

void MainWindow::enableRun(bool enable)
{
    ui->action_Preview->setEnabled(enable);
    ui->action_Final->setEnabled(enable);
}

void MainWindow::mdiChildDestroyed()
{
    statusBar()->clearMessage();
    if (activeMdiChild())
        return;
    ui->action_Copy->setEnabled(false);
    ui->action_Paste->setEnabled(false);
}

void MainWindow::testWindowStateChanged(Qt::WindowStates, Qt::WindowStates)
{
    if (const auto *image = qobject_cast<ImageMdiChild *>(activeMdiChild()))
        ui->action_FitToWindow->setChecked(image->isFitToWindow());
}

// --- Window menu -----------------------------------------------------------------

void MainWindow::updateWindowMenu()
{
    QMenu *const menu = ui->menu_Window;
    menu->clear();
    menu->addActions({ui->action_Close, ui->action_CloseAll});
    menu->addSeparator();
    menu->addActions({ui->action_Tile, ui->action_Cascade});
    menu->addSeparator();
    menu->addActions({ui->action_Next, ui->action_Previous, separatorAction});

    const QList<QMdiSubWindow *> windows = mdiArea->subWindowList();
    separatorAction->setVisible(!windows.isEmpty());
    int number = 0;
    for (QMdiSubWindow *window : windows) {
        const auto *view = qobject_cast<MdiChild *>(window->widget());
        if (!view)
            continue;
        ++number;
        const QString text =
            number <= 9 ? QStringLiteral("&%1 %2") : QStringLiteral("%1 %2");
        QAction *const entry = menu->addAction(
            text.arg(number).arg(menuText(view->userFriendlyCurrentFile())));
        entry->setCheckable(true);
        entry->setChecked(view == MainWindow::activeMdiChild());
        connect(
            entry, &QAction::triggered, this,
            [this, target = QPointer<QWidget>(window)] { setActiveSubWindow(target); });
    }
}

void MainWindow::setActiveSubWindow(QWidget *window)
{
    auto *const target = qobject_cast<QMdiSubWindow *>(window);
    if (target && mdiArea->subWindowList().contains(target))
        mdiArea->setActiveSubWindow(target);
}

// --- Geometry and end ------------------------------------------------------------

void MainWindow::readSettings()
{
    const AppSettings settings;
    placeWindow(
        this,
        settings.value(QStringLiteral("MainWindow/Position"), QPoint(200, 200)).toPoint(),
        settings.value(QStringLiteral("MainWindow/Size"), QSize(400, 400)).toSize());
    restoreDocks();
}

void MainWindow::writeSettings() const
{
    AppSettings settings;
    settings.setValue(QStringLiteral("MainWindow/Position"), pos());
    settings.setValue(QStringLiteral("MainWindow/Size"), size());
    storeDocks();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (renderDepth != 0) {
        event->ignore();
        return;
    }
    mdiArea->closeAllSubWindows();
    const QList<QMdiSubWindow *> windows = mdiArea->subWindowList();
    const bool refused =
        std::any_of(windows.begin(), windows.end(), [](const QMdiSubWindow *window) {
            return qobject_cast<MdiChild *>(window->widget()) != nullptr;
        });
    if (refused) {
        event->ignore();
        return;
    }
    writeSettings();
    event->accept();
}
