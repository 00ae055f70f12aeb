#include "app/newfiledialog.h"

#include "ui_newfiledialog.h"
#include "views/fieldhelp.h"

#include <QIntValidator>
#include <QPushButton>

namespace {

constexpr int LargestSide = 16384;

} // namespace

NewFileDialog::NewFileDialog(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui_NewFileDialog>())
{
    ui->setupUi(this);
    ui->buttonBox->button(QDialogButtonBox::Ok)
        ->setWhatsThis(tr("Creates the file and closes the dialog."));
    ui->buttonBox->button(QDialogButtonBox::Cancel)
        ->setWhatsThis(tr("Closes the dialog. No file is created."));
    completeHelp(this);
    ui->lineEditWidth->setValidator(new QIntValidator(0, LargestSide, this));
    ui->lineEditHeight->setValidator(new QIntValidator(0, LargestSide, this));
    connect(ui->radioButtonImage, &QRadioButton::clicked, this,
            &NewFileDialog::radioButtonImageClicked);
    connect(ui->radioButtonScenery, &QRadioButton::clicked, this,
            &NewFileDialog::radioButtonSceneryClicked);
}

NewFileDialog::~NewFileDialog() = default;

bool NewFileDialog::createImageFile() const { return ui->radioButtonImage->isChecked(); }

QSize NewFileDialog::imageFileSize() const
{
    return {ui->lineEditWidth->text().toInt(), ui->lineEditHeight->text().toInt()};
}

void NewFileDialog::radioButtonImageClicked() { enableSize(true); }

void NewFileDialog::radioButtonSceneryClicked() { enableSize(false); }

void NewFileDialog::enableSize(bool enable)
{
    ui->lineEditWidth->setEnabled(enable);
    ui->lineEditHeight->setEnabled(enable);
}
