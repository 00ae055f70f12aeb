#include "shell/mdichild.h"

#include <QFileInfo>
#include <QKeyEvent>

MdiChild::MdiChild(QWidget *parent) : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

void MdiChild::newFile()
{
    isUntitled = true;
    setWindowTitle(curFile + QStringLiteral("[*]"));
}

bool MdiChild::save() { return isUntitled ? saveAs() : saveFile(curFile); }

QString MdiChild::userFriendlyCurrentFile() const { return strippedName(curFile); }

QString MdiChild::currentFile() const { return curFile; }

void MdiChild::setCurrentFile(const QString &fileName)
{
    curFile = QFileInfo(fileName).canonicalFilePath();
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
