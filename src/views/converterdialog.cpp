#include "views/converterdialog.h"

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "views/fieldhelp.h"
#include "views/waitcursor.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace {

const QLatin1String DirectoryKey("MRUDirectory");

QString rememberedDirectory() { return AppSettings().value(DirectoryKey).toString(); }

} // namespace

ConverterDialog::ConverterDialog(const QString &messageTitle, QWidget *parent)
    : QDialog(parent), m_messageTitle(messageTitle)
{
}

void ConverterDialog::setUpFiles(QPushButton *ok, QPushButton *browseToFile,
                                 QLineEdit *toFile, const QList<QLineEdit *> &inputs)
{
    m_ok = ok;
    m_toFile = toFile;
    m_files = inputs;
    m_files << toFile;
    connect(browseToFile, &QPushButton::clicked, this,
            [this] { pushButtonBrowseToFileClicked(); });
    ok->setEnabled(false);
    completeHelp(this);
}

void ConverterDialog::pushButtonBrowseToFileClicked()
{
    browseToSave(m_toFile, imageFileFilter());
}

void ConverterDialog::validateOKButton()
{
    // A file once named cannot be removed, so there is nothing to disable.
    if (allFilesNamed())
        m_ok->setEnabled(true);
}

bool ConverterDialog::allFilesNamed() const
{
    return std::none_of(m_files.begin(), m_files.end(),
                        [](const QLineEdit *field) { return field->text().isEmpty(); });
}

QString ConverterDialog::browseToOpen(QLineEdit *field, const QString &filter,
                                      const QString &caption)
{
    QString name = askToOpen(filter, caption);
    if (!name.isEmpty()) {
        takeFile(field, name);
        validateOKButton();
    }
    return name;
}

QString ConverterDialog::browseToSave(QLineEdit *field, const QString &filter,
                                      const QString &caption)
{
    QString name = askToSave(filter, caption);
    if (!name.isEmpty()) {
        takeFile(field, name);
        validateOKButton();
    }
    return name;
}

QString ConverterDialog::askToOpen(const QString &filter, const QString &caption)
{
    return QFileDialog::getOpenFileName(this, caption, rememberedDirectory(), filter);
}

QStringList ConverterDialog::askToOpenSeveral(const QString &filter,
                                              const QString &caption)
{
    return QFileDialog::getOpenFileNames(this, caption, rememberedDirectory(), filter);
}

QString ConverterDialog::askToSave(const QString &filter, const QString &caption)
{
    return QFileDialog::getSaveFileName(this, caption, rememberedDirectory(), filter);
}

void ConverterDialog::takeFile(QLineEdit *field, const QString &fileName)
{
    rememberDirectoryOf(fileName);
    field->setText(fileName);
}

void ConverterDialog::rememberDirectoryOf(const QString &fileName)
{
    AppSettings().setValue(DirectoryKey, QFileInfo(fileName).absolutePath());
}

void ConverterDialog::showError(const QString &text)
{
    QMessageBox::critical(this, m_messageTitle, text);
}

void ConverterDialog::showCouldNotOpen(const QString &fileName)
{
    showError(tr("Could not open file \"%1\".").arg(fileName));
}

void ConverterDialog::showCouldNotSave(const QString &fileName)
{
    showError(tr("Could not save file \"%1\".").arg(fileName));
}

bool ConverterDialog::saveOutput(const QImage &image)
{
    bool saved = false;
    {
        const WaitCursor wait;
        saved = saveImageFile(image, m_toFile->text());
    }
    if (!saved)
        showCouldNotSave(m_toFile->text());
    return saved;
}

QString ConverterDialog::imageFileFilter()
{
    return tr("Image Files (*.bmp *.png *.ppm *.tga *.tif);;All Files (*.*)");
}
