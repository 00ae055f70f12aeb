#include "app/aboutzephrantdialog.h"

#include "ui_aboutzephrantdialog.h"
#include "views/fieldhelp.h"

#include <QPushButton>

AboutZephrantDialog::AboutZephrantDialog(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui_AboutZephrantDialog>())
{
    ui->setupUi(this);
    ui->buttonBox->button(QDialogButtonBox::Ok)->setWhatsThis(tr("Closes the dialog."));
    completeHelp(this);
}

AboutZephrantDialog::~AboutZephrantDialog() = default;
