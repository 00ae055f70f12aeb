#include "base/wholefile.h"

#include "base/freshfile.h"
#include "base/overwrite.h"
#include "base/replacing.h"

#include <QFileInfo>

#include <cerrno>
#include <new>

#include <sys/stat.h>

namespace {

using Write = std::function<bool(QIODevice &)>;

bool failed(int systemError, QString *error)
{
    *error = qt_error_string(systemError);
    return false;
}

// A pipe or a device takes what comes, and there is nothing to keep.
bool writeToDevice(const QString &name, const Write &write, QString *error)
{
    OutputFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        *error = file.errorString();
        return false;
    }
    const bool written = write(file);
    const bool good = file.finish() && written;
    *error = file.reason();
    return good;
}

bool writeFresh(FreshFile &fresh, const Write &write, QString *error)
{
    OutputFile &file = fresh.file();
    const bool written = write(file);
    if (!written || !file.finish()) {
        *error = file.reason();
        return false;
    }
    return fresh.takePlace() || failed(errno, error);
}

bool writeRegular(const QString &name, const Write &write, QString *error)
{
    const QByteArray path = QFile::encodeName(name);
    struct stat earlier {};
    const bool replaces = ::stat(path.constData(), &earlier) == 0;
    if (replaces && !mayBeWritten(path))
        return failed(errno, error);
    FreshFile fresh;
    if (!fresh.open(path, 0666)) {
        const int reason = errno;
        return replaces ? overwriteFile(path, write, error) : failed(reason, error);
    }
    if (replaces)
        takeOver(fresh.file().handle(), earlier);
    return writeFresh(fresh, write, error);
}

} // namespace

bool writeWholeFile(const QString &name, const Write &write, QString *error)
{
    QString ignored;
    QString *const reason = error ? error : &ignored;
    reason->clear();
    try {
        const QString target = linkTarget(name);
        const QFileInfo info(target);
        if (info.exists() && !info.isFile())
            return writeToDevice(target, write, reason);
        return writeRegular(target, write, reason);
    } catch (const std::bad_alloc &) {
        return failed(ENOMEM, reason);
    }
}
