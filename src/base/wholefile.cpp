#include "base/wholefile.h"

#include "base/freshfile.h"
#include "base/overwrite.h"

#include <QFileInfo>

#include <cerrno>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Write = std::function<bool(QIODevice &)>;

constexpr int MostLinks = 40; // as many as the system follows

bool failed(int systemError, QString *error)
{
    *error = qt_error_string(systemError);
    return false;
}

// The file that a chain of links names, which need not exist.
QString linkTarget(const QString &name)
{
    QString target = name;
    for (int i = 0; i < MostLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return target;
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

// Replacing asks for leave to write the folder alone, not the file.
bool mayBeWritten(const QByteArray &path)
{
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CLOEXEC);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

// Owner and permissions of the file that is replaced, as far as the system allows.
void takeOver(int file, const struct stat &earlier)
{
    [[maybe_unused]] const int owned = ::fchown(file, earlier.st_uid, earlier.st_gid);
    [[maybe_unused]] const int permitted = ::fchmod(file, earlier.st_mode & 0777);
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
