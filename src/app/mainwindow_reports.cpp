// What importers and tools have come to.

#include "app/mainwindow.h"
#include "document/scenerymdichild.h"
#include "ui_mainwindow.h"
#include "views/backgroundwork.h"
#include "views/operationreport.h"
#include "views/reportdialog.h"
#include "views/statushints.h"

#include <QFileInfo>
#include <QLineEdit>

#include <memory>

void MainWindow::addReports()
{
    reporting = new BackgroundWork(this);
    actionReport = new QAction(tr("Last &Report..."), this);
    actionReport->setObjectName(QStringLiteral("action_Report"));
    actionReport->setWhatsThis(
        tr("To read what the last importer or tool has come to: size, lowest and highest "
           "number, and its messages; and to open or use its result."));
    actionReport->setEnabled(false);
    ui->menu_Calculate->addSeparator();
    ui->menu_Calculate->addAction(actionReport);
    connect(actionReport, &QAction::triggered, this, &MainWindow::showReport);
}

void MainWindow::take(const OperationOutcome &outcome)
{
    for (const QString &file : outcome.refused)
        offerTerrain(file);
    if (outcome.file.isEmpty())
        return;
    const auto made = std::make_shared<OperationReport>();
    reporting->begin(
        [outcome, made](Progress &progress) { *made = makeReport(outcome, progress); },
        [this, made] {
            if (made->outcome.file.isEmpty())
                return; // there was no memory for it
            report = made;
            actionReport->setEnabled(true);
            tellHint({.text = made->line(),
                      .button = tr("&Report..."),
                      .buttonHelp = tr("Opens the report on what was written."),
                      .act = [this] { showReport(); },
                      .subject = QStringLiteral("report")});
        });
}

void MainWindow::showReport()
{
    if (!report)
        return;
    const std::shared_ptr<const OperationReport> shown = report;
    ReportDialog dialog(shown->outcome, shown->thumbnail, this);
    dialog.setSceneryIsThere(activeScenery() != nullptr);
    connect(&dialog, &ReportDialog::openResult, this,
            [this, shown] { open(shown->outcome.file); });
    connect(&dialog, &ReportDialog::useInScenery, this,
            [this, shown] { useInScenery(*shown); });
    dialog.exec();
}

// As if the user had typed the name.
void MainWindow::useInScenery(const OperationReport &used)
{
    const SceneryMdiChild *const view = activeScenery();
    if (!view)
        return;
    auto *const field = view->findChild<QLineEdit *>(
        used.isElevation ? QStringLiteral("lineEditElevationFile")
                         : QStringLiteral("lineEditTextureFile"));
    const QString name = QFileInfo(used.outcome.file).absoluteFilePath();
    field->setText(name);
    emit field->textEdited(name);
}
