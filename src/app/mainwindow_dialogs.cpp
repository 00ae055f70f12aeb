#include "app/mainwindow.h"

#include "app/aboutzephrantdialog.h"
#include "app/librariesdialog.h"
#include "app/settingsdialog.h"
#include "app/terrainopener.h"
#include "importdialogs/importdialogs.h"
#include "tooldialogs/tooldialogs.h"
#include "ui_mainwindow.h"
#include "views/converterdialog.h"
#include "views/statushints.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>

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
    auto *const libraries = new QAction(tr("&Libraries..."), this);
    libraries->setObjectName(QStringLiteral("action_Libraries"));
    libraries->setWhatsThis(tr("To list the libraries that the program is built on, with "
                               "their versions and licences."));
    ui->menu_Help->addAction(libraries);
    connect(libraries, &QAction::triggered, this, &MainWindow::librariesDialog);
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
    const std::unique_ptr<QDialog> dialog = make(this);
    dialog->exec();
    if (const auto *const converter = qobject_cast<ConverterDialog *>(dialog.get()))
        take(converter->outcome());
}

void MainWindow::openDialog(const char *object)
{
    findChild<QAction *>(QLatin1String(object))->trigger();
}

void MainWindow::settings() { runDialog(makeDialog<SettingsDialog>); }

void MainWindow::aboutZephrantDialog() { runDialog(makeDialog<AboutZephrantDialog>); }

void MainWindow::librariesDialog()
{
    LibrariesDialog dialog(this);
    // It is loaded for this, beside the window: what is in use is what it says itself.
    if (terrain)
        terrain->askLibrary([shown =
                                 QPointer(&dialog)](const Result<QStringList> &about) {
            if (!shown)
                return;
            shown->add(about ? LibraryNote{about->value(0), about->value(1),
                                           about->value(2),
                                           tr("Reads terrain for Open Terrain.")}
                             : LibraryNote{QStringLiteral("GDAL"), tr("missing"),
                                           QStringLiteral("MIT"), about.error().text});
        });
    dialog.exec();
}
