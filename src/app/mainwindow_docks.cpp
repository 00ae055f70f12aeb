// The docks beside the workspace: closed at first, opened from the View menu, and open
// again where they were at the end.

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "document/scenerymdichild.h"
#include "livedocks/livedock.h"
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
    addDockWidget(Qt::RightDockWidgetArea, liveDock);
    liveDock->hide();
    QAction *const action = liveDock->toggleViewAction();
    action->setObjectName(QStringLiteral("action_LiveView"));
    action->setText(tr("&Live View"));
    action->setWhatsThis(
        tr("To show the active scenery as the renderer draws it, while it is changed, and "
           "to fly through it."));
    ui->menu_View->addSeparator();
    ui->menu_View->addAction(action);
    connect(liveDock, &LiveDock::told, this, [this](const QString &text) {
        tellHint({.text = text, .subject = QStringLiteral("liveView")});
    });
    connect(mdiArea, &QMdiArea::subWindowActivated, this, &MainWindow::followScenery);
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
