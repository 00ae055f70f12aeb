#include "views/mdichild.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>

MdiChild::MdiChild(QWidget *parent) : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

void MdiChild::newFile()
{
    isUntitled = true;
    setWindowTitle(curFile + QStringLiteral("[*]"));
}

bool MdiChild::save()
{
    if (isUntitled)
        return saveAs();
    const QString fileName = curFile; // saving sets the name anew
    return saveFile(fileName);
}

MdiChild::Closing MdiChild::askToClose()
{
    if (!isModified())
        return Closing::AsItIs;
    const auto answer = QMessageBox::warning(
        this, tr("Close File"),
        tr("The file has been modified:\n\"%1\"\nSave the changes?").arg(curFile),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::No)
        return Closing::AsItIs;
    return answer == QMessageBox::Yes && save() ? Closing::Saved : Closing::Refused;
}

QString MdiChild::userFriendlyCurrentFile() const { return strippedName(curFile); }

QString MdiChild::currentFile() const { return curFile; }

void MdiChild::setCurrentFile(const QString &fileName)
{
    const QFileInfo file(fileName);
    curFile = file.canonicalFilePath();
    if (curFile.isEmpty()) // nothing of that name is on disk
        curFile = file.absoluteFilePath();
    isUntitled = false;
    setWindowTitle(userFriendlyCurrentFile() + QStringLiteral("[*]"));
}

QString MdiChild::strippedName(const QString &fullFileName) const
{
    return QFileInfo(fullFileName).fileName();
}

void MdiChild::keyPressEvent(QKeyEvent *event)
{
    // A dialog closes on Escape; a document must not.
    if (event->key() == Qt::Key_Escape)
        return;
    QDialog::keyPressEvent(event);
}
