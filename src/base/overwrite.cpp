#include "base/overwrite.h"

#include "base/outputfile.h"
#include "base/unfinished.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Closes a descriptor.
class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    operator int() const { return m_number; }

private:
    int m_number;
};

bool readAll(int file, QByteArray &contents)
{
    struct stat status {};
    if (::fstat(file, &status) != 0)
        return false;
    contents.resize(status.st_size);
    for (qsizetype at = 0; at < contents.size();) {
        const ssize_t got =
            ::pread(file, contents.data() + at, size_t(contents.size() - at), at);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return errno = got < 0 ? errno : EIO, false;
        at += got;
    }
    return true;
}

// Writes from the first byte on; bytes behind the last one are cut off at the end.
bool putContents(int file, const QByteArray &contents)
{
    for (qsizetype at = 0; at < contents.size();) {
        const ssize_t put =
            ::pwrite(file, contents.constData() + at, size_t(contents.size() - at), at);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            return false;
        at += put;
    }
    return syncToDisk(file) && ::ftruncate(file, contents.size()) == 0;
}

// Has the disk keep room behind the end, so that a full one says so before a byte of
// the file is changed. Where the file system knows no such thing it says so later.
bool reserve(int file, qsizetype from, qsizetype to)
{
    if (to <= from)
        return true;
    const int result = ::fallocate(file, FALLOC_FL_KEEP_SIZE, from, to - from);
    return result == 0 || errno == EOPNOTSUPP || errno == ENOSYS;
}

// The last resort for contents that cannot be put back.
QString rescued(const QByteArray &contents)
{
    QTemporaryFile file(QDir::tempPath() + QLatin1String("/zephrant-XXXXXX"));
    if (!file.open() || file.write(contents) != contents.size() || !file.flush())
        return {};
    file.setAutoRemove(false);
    return file.fileName();
}

QString reasonOf(int systemError, bool putBack, const QByteArray &earlier)
{
    QString reason = qt_error_string(systemError);
    if (putBack)
        return reason;
    const QString name = rescued(earlier);
    return name.isEmpty()
               ? reason
               : QObject::tr("%1; the earlier contents are in \"%2\"").arg(reason, name);
}

} // namespace

bool overwriteFile(const QByteArray &path, const std::function<bool(QIODevice &)> &write,
                   QString *error)
{
    QBuffer contents;
    contents.open(QIODevice::ReadWrite);
    if (!write(contents))
        return false;
    const Descriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC));
    QByteArray earlier;
    if (file < 0 || !readAll(file, earlier) ||
        !reserve(file, earlier.size(), contents.size())) {
        *error = qt_error_string(errno);
        return false;
    }
    const FileReplacement guard;
    if (putContents(file, contents.data()))
        return true;
    const int reason = errno;
    *error = reasonOf(reason, putContents(file, earlier), earlier);
    return false;
}
