// The commands that start and stop runs.

#include "app/mainwindow.h"
#include "document/scenerymdichild.h"
#include "ui_mainwindow.h"
#include "views/imagemdichild.h"
#include "views/statushints.h"

#include <QMessageBox>
#include <QPointer>
#include <QScopeGuard>

void MainWindow::renderPreview()
{
    run(activeScenery(), &SceneryMdiChild::renderPreview);
}

void MainWindow::renderFinal() { run(activeScenery(), &SceneryMdiChild::renderFinal); }

void MainWindow::stopRendering() { askToStop(activeScenery(), this); }

void MainWindow::run(SceneryMdiChild *view, void (SceneryMdiChild::*operation)())
{
    if (!view)
        return;
    // From the window of its pictures a scenery can be started that is not active; the
    // entries then go on telling of the document that is.
    const bool active = view == activeScenery();
    hints->dismiss();
    ++renderDepth;
    if (active) {
        enableRun(false);
        ui->action_Stop->setEnabled(true);
        enableZoom(true);
    }
    const auto end = qScopeGuard([this, active] { // also where memory runs out
        --renderDepth;
        if (!active) {
            updateMenus();
        } else if (renderDepth == 0) {
            enableRun(true);
            ui->action_Stop->setEnabled(false);
        }
    });
    (view->*operation)();
}

void MainWindow::askToStop(SceneryMdiChild *view, QWidget *parent)
{
    if (!view)
        return;
    const QPointer<SceneryMdiChild> asked = view;
    const auto answer = QMessageBox::question(
        parent, tr("Stop Rendering"), tr("Do you really want to cancel rendering?"),
        QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes && asked)
        asked->stopRendering();
}

void MainWindow::addRunKeys(SceneryMdiChild *view, ImageMdiChild *picture)
{
    const auto add = [picture](const QAction *told, const auto &act) {
        auto *const own = new QAction(told->icon(), told->text(), picture);
        own->setToolTip(told->toolTip());
        own->setWhatsThis(told->whatsThis());
        own->setShortcut(told->shortcut());
        picture->addAction(own);
        connect(own, &QAction::triggered, picture, act);
    };
    const auto start = [this, view](void (SceneryMdiChild::*operation)()) {
        return [this, view, operation] {
            if (!view->isRendering())
                run(view, operation);
        };
    };
    add(ui->action_Preview, start(&SceneryMdiChild::renderPreview));
    add(ui->action_Final, start(&SceneryMdiChild::renderFinal));
    add(ui->action_Stop, [this, view, picture] {
        if (view->isRendering())
            askToStop(view, picture);
    });
    add(ui->action_Close, [picture] { picture->close(); });
}
