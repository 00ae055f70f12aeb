#include "app/mainwindow.h"

#include "app/aboutzephrantdialog.h"
#include "app/settingsdialog.h"
#include "importdialogs/asciiirregulardialog.h"
#include "importdialogs/asciiregulardialog.h"
#include "importdialogs/binconversiondialog.h"
#include "importdialogs/japanconversiondialog.h"
#include "importdialogs/sdtsconversiondialog.h"
#include "importdialogs/usgsdemconversiondialog.h"
#include "tooldialogs/changeblue0pixelsdialog.h"
#include "tooldialogs/convolutiondialog.h"
#include "tooldialogs/elevationtocolordialog.h"
#include "tooldialogs/elevationtograydialog.h"
#include "tooldialogs/graytoelevationdialog.h"
#include "tooldialogs/maskdialog.h"
#include "tooldialogs/mergedialog.h"
#include "tooldialogs/rectifydialog.h"
#include "tooldialogs/resampledialog.h"
#include "ui_mainwindow.h"
#include "views/noticelabel.h"

#include <QApplication>

namespace {

template <class Dialog> void runDialog(QWidget *parent) { Dialog(parent).exec(); }

struct DialogEntry {
    QAction *Ui_MainWindow::*action;
    void (MainWindow::*slot)();
    void (*run)(QWidget *parent);
};

// Every entry that runs a dialog.
constexpr DialogEntry Entries[] = {
    {&Ui_MainWindow::action_Settings, &MainWindow::settings, runDialog<SettingsDialog>},
    {&Ui_MainWindow::action_AboutZephrantDialog, &MainWindow::aboutZephrantDialog,
     runDialog<AboutZephrantDialog>},
    {&Ui_MainWindow::action_UsgsDEMConversionDialog, &MainWindow::usgsDEMConversionDialog,
     runDialog<UsgsDemConversionDialog>},
    {&Ui_MainWindow::action_BinConversionDialog, &MainWindow::binConversionDialog,
     runDialog<BinConversionDialog>},
    {&Ui_MainWindow::action_AsciiRegularDialog, &MainWindow::asciiRegularDialog,
     runDialog<AsciiRegularDialog>},
    {&Ui_MainWindow::action_AsciiIrregularDialog, &MainWindow::asciiIrregularDialog,
     runDialog<AsciiIrregularDialog>},
    {&Ui_MainWindow::action_SdtsConversionDialog, &MainWindow::sdtsConversionDialog,
     runDialog<SdtsConversionDialog>},
    {&Ui_MainWindow::action_JapanConversionDialog, &MainWindow::japanConversionDialog,
     runDialog<JapanConversionDialog>},
    {&Ui_MainWindow::action_ElevationToColorDialog, &MainWindow::elevationToColorDialog,
     runDialog<ElevationToColorDialog>},
    {&Ui_MainWindow::action_ElevationToGrayDialog, &MainWindow::elevationToGrayDialog,
     runDialog<ElevationToGrayDialog>},
    {&Ui_MainWindow::action_GrayToElevationDialog, &MainWindow::grayToElevationDialog,
     runDialog<GrayToElevationDialog>},
    {&Ui_MainWindow::action_ChangeBlue0PixelsDialog, &MainWindow::changeBlue0PixelsDialog,
     runDialog<ChangeBlue0PixelsDialog>},
    {&Ui_MainWindow::action_ConvolutionDialog, &MainWindow::convolutionDialog,
     runDialog<ConvolutionDialog>},
    {&Ui_MainWindow::action_MergeDialog, &MainWindow::mergeDialog,
     runDialog<MergeDialog>},
    {&Ui_MainWindow::action_MaskDialog, &MainWindow::maskDialog, runDialog<MaskDialog>},
    {&Ui_MainWindow::action_ResampleDialog, &MainWindow::resampleDialog,
     runDialog<ResampleDialog>},
    {&Ui_MainWindow::action_RectifyDialog, &MainWindow::rectifyDialog,
     runDialog<RectifyDialog>},
};

} // namespace

void MainWindow::connectDialogActions()
{
    for (const DialogEntry &entry : Entries)
        connect(ui.get()->*entry.action, &QAction::triggered, this, entry.slot);
    connect(ui->action_AboutQtDialog, &QAction::triggered, qApp, &QApplication::aboutQt);
}

void MainWindow::runDialogOf(const QAction *entry)
{
    notice->dismiss();
    for (const DialogEntry &candidate : Entries) {
        if (ui.get()->*candidate.action == entry)
            candidate.run(this);
    }
}

void MainWindow::settings() { runDialogOf(ui->action_Settings); }

void MainWindow::aboutZephrantDialog() { runDialogOf(ui->action_AboutZephrantDialog); }

void MainWindow::usgsDEMConversionDialog()
{
    runDialogOf(ui->action_UsgsDEMConversionDialog);
}

void MainWindow::binConversionDialog() { runDialogOf(ui->action_BinConversionDialog); }

void MainWindow::asciiRegularDialog() { runDialogOf(ui->action_AsciiRegularDialog); }

void MainWindow::asciiIrregularDialog() { runDialogOf(ui->action_AsciiIrregularDialog); }

void MainWindow::sdtsConversionDialog() { runDialogOf(ui->action_SdtsConversionDialog); }

void MainWindow::japanConversionDialog()
{
    runDialogOf(ui->action_JapanConversionDialog);
}

void MainWindow::elevationToColorDialog()
{
    runDialogOf(ui->action_ElevationToColorDialog);
}

void MainWindow::elevationToGrayDialog()
{
    runDialogOf(ui->action_ElevationToGrayDialog);
}

void MainWindow::grayToElevationDialog()
{
    runDialogOf(ui->action_GrayToElevationDialog);
}

void MainWindow::changeBlue0PixelsDialog()
{
    runDialogOf(ui->action_ChangeBlue0PixelsDialog);
}

void MainWindow::convolutionDialog() { runDialogOf(ui->action_ConvolutionDialog); }

void MainWindow::mergeDialog() { runDialogOf(ui->action_MergeDialog); }

void MainWindow::maskDialog() { runDialogOf(ui->action_MaskDialog); }

void MainWindow::resampleDialog() { runDialogOf(ui->action_ResampleDialog); }

void MainWindow::rectifyDialog() { runDialogOf(ui->action_RectifyDialog); }
