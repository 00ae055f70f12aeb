#include "faults/folder.h"

#include "faults/testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

FolderContents readFolder(const QString &folder)
{
    FolderContents contents;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        contents[QDir(folder).relativeFilePath(file.fileName())] = file.readAll();
    }
    return contents;
}

void writeFolder(const QString &folder, const FolderContents &contents)
{
    const FolderContents found = readFolder(folder);
    for (auto it = found.cbegin(); it != found.cend(); ++it)
        if (!contents.contains(it.key()))
            QFile::remove(folder + '/' + it.key());
    for (auto it = contents.cbegin(); it != contents.cend(); ++it)
        if (!found.contains(it.key()) || found[it.key()] != it.value())
            writeText(folder + '/' + it.key(), it.value());
}
