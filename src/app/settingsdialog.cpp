#include "app/settingsdialog.h"

#include "base/appsettings.h"
#include "ui_settingsdialog.h"
#include "views/fieldhelp.h"

namespace {

constexpr int DefaultCycle = 4000; // ms

} // namespace

SettingsDialog::SettingsDialog(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui_SettingsDialog>())
{
    ui->setupUi(this);
    completeHelp(this);
    const AppSettings settings;
    ui->checkBoxRefreshPeriodically->setChecked(
        settings.value(QStringLiteral("periodicalRefresh"), false).toBool());
    const int cycle = settings.value(QStringLiteral("refreshCycle")).toInt();
    ui->spinBoxRefreshCycle->setValue(cycle == 0 ? DefaultCycle : cycle);
}

SettingsDialog::~SettingsDialog() = default;

void SettingsDialog::accept()
{
    AppSettings settings;
    settings.setValue(QStringLiteral("periodicalRefresh"),
                      ui->checkBoxRefreshPeriodically->isChecked());
    settings.setValue(QStringLiteral("refreshCycle"), ui->spinBoxRefreshCycle->value());
    QDialog::accept();
}
