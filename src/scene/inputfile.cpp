#include "scene/inputfile.h"

#include <QDir>
#include <QFileInfo>

QString findInputFile(const QString &name, const QString &sceneryFolder)
{
    if (name.isEmpty() || sceneryFolder.isEmpty() || QDir::isAbsolutePath(name) ||
        QFileInfo::exists(name))
        return name;
    const QString beside = QDir(sceneryFolder).filePath(name);
    return QFileInfo::exists(beside) ? beside : name;
}
