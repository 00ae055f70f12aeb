#include "app/mainwindow.h"

#include "app/aboutzephrantdialog.h"
#include "app/settingsdialog.h"
#include "importdialogs/importdialogs.h"
#include "tooldialogs/tooldialogs.h"
#include "ui_mainwindow.h"
#include "views/statushints.h"

#include <QApplication>
#include <QMenu>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("DialogEntry", text);
}

QAction *actionOf(const DialogEntry &entry, QWidget *window)
{
    auto *const action = new QAction(translated(entry.text), window);
    action->setObjectName(QLatin1String(entry.object));
    action->setWhatsThis(
        MainWindow::tr("To show the \"%1\" dialog.").arg(translated(entry.title)));
    return action;
}

} // namespace

void MainWindow::connectDialogActions()
{
    connect(ui->action_Settings, &QAction::triggered, this, &MainWindow::settings);
    connect(ui->action_AboutZephrantDialog, &QAction::triggered, this,
            &MainWindow::aboutZephrantDialog);
    connect(ui->action_AboutQtDialog, &QAction::triggered, qApp, &QApplication::aboutQt);
    addDialogActions();
}

void MainWindow::addDialogActions()
{
    for (const auto table : {importDialogs(), toolDialogs()}) {
        for (const DialogEntry &entry : table) {
            QAction *const action = actionOf(entry, this);
            findChild<QMenu *>(QLatin1String(entry.menu))->addAction(action);
            connect(action, &QAction::triggered, this,
                    [this, &entry] { runDialog(entry.make); });
        }
    }
}

void MainWindow::runDialog(std::unique_ptr<QDialog> (*make)(QWidget *parent))
{
    hints->dismiss();
    make(this)->exec();
}

void MainWindow::openDialog(const char *object)
{
    findChild<QAction *>(QLatin1String(object))->trigger();
}

void MainWindow::settings() { runDialog(makeDialog<SettingsDialog>); }

void MainWindow::aboutZephrantDialog() { runDialog(makeDialog<AboutZephrantDialog>); }
