// The docks beside the workspace: closed at first, opened from the View menu, and open
// again where they were at the end.

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "document/scenerymdichild.h"
#include "livedocks/livedock.h"
#include "livedocks/mapdock.h"
#include "ui_mainwindow.h"
#include "views/statushints.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

QString docksKey() { return QStringLiteral("MainWindow/docks"); }

} // namespace

void MainWindow::addDocks()
{
    liveDock = new LiveDock(this);
    addDock(
        liveDock, QStringLiteral("action_LiveView"), tr("&Live View"),
        tr("To show the active scenery as the renderer draws it, while it is changed, "
           "and to fly through it."));
    addDock(
        new MapDock(liveDock->session(), this), QStringLiteral("action_Map"), tr("&Map"),
        tr("To show the terrain from above, with the flight and the camera of the live "
           "view, which can be dragged there."));
    connect(liveDock, &LiveDock::told, this, [this](const QString &text) {
        tellHint({.text = text, .subject = QStringLiteral("liveView")});
    });
    connect(mdiArea, &QMdiArea::subWindowActivated, this, &MainWindow::followScenery);
}

// Closed at first, with an entry in the View menu.
void MainWindow::addDock(QDockWidget *dock, const QString &action, const QString &text,
                         const QString &help)
{
    addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->hide();
    QAction *const entry = dock->toggleViewAction();
    entry->setObjectName(action);
    entry->setText(text);
    entry->setWhatsThis(help);
    if (dock == liveDock)
        ui->menu_View->addSeparator();
    ui->menu_View->addAction(entry);
}

// The dock may have the focus: then no sub window is active, and the current one counts.
void MainWindow::followScenery()
{
    const QMdiSubWindow *const window = mdiArea->currentSubWindow();
    liveDock->setScenery(window ? qobject_cast<SceneryMdiChild *>(window->widget())
                                : nullptr);
}

void MainWindow::restoreDocks()
{
    restoreState(AppSettings().value(docksKey()).toByteArray());
}

void MainWindow::storeDocks() const
{
    AppSettings settings;
    settings.setValue(docksKey(), saveState());
}
