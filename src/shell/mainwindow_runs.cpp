// The commands that start and stop runs.

#include "scenery/scenerymdichild.h"
#include "shell/mainwindow.h"
#include "ui_mainwindow.h"

#include <QMessageBox>
#include <QPointer>

void MainWindow::renderPreview() { run(&SceneryMdiChild::renderPreview); }

void MainWindow::renderFinal() { run(&SceneryMdiChild::renderFinal); }

void MainWindow::run(void (SceneryMdiChild::*operation)())
{
    SceneryMdiChild *const view = activeScenery();
    if (!view)
        return;
    ++renderDepth;
    enableRun(false);
    ui->action_Stop->setEnabled(true);
    enableZoom(true);
    (view->*operation)();
    --renderDepth;
    if (renderDepth == 0) {
        enableRun(true);
        ui->action_Stop->setEnabled(false);
    }
}

void MainWindow::stopRendering()
{
    const QPointer<SceneryMdiChild> view = activeScenery();
    if (!view)
        return;
    const auto answer = QMessageBox::question(
        this, tr("Stop Rendering"), tr("Do you really want to cancel rendering?"),
        QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes && view)
        view->stopRendering();
}
