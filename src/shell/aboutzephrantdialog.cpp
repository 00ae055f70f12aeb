#include "shell/aboutzephrantdialog.h"

#include "ui_aboutzephrantdialog.h"

AboutZephrantDialog::AboutZephrantDialog(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui_AboutZephrantDialog>())
{
    ui->setupUi(this);
}

AboutZephrantDialog::~AboutZephrantDialog() = default;
