#include "terrain/filekind.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/stat.h>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Terrain", source);
}

} // namespace

QString notAFileText(const QString &name)
{
    struct stat found {};
    if (::stat(QFile::encodeName(name).constData(), &found) != 0)
        return {};
    switch (found.st_mode & S_IFMT) {
    case S_IFREG:
        return {};
    case S_IFDIR:
        return text("\"%1\" is a folder, not a file.").arg(name);
    case S_IFIFO:
        return text("\"%1\" is a pipe, not a file.").arg(name);
    case S_IFSOCK:
        return text("\"%1\" is a socket, not a file.").arg(name);
    default:
        return text("\"%1\" is a device, not a file.").arg(name);
    }
}
