#include "base/freshfile.h"

#include "base/unfinished.h"

#include <QDir>
#include <QRandomGenerator>
#include <QString>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char Prefix[] = ".zephrant-";
constexpr char Suffix[] = ".part";
constexpr int Tries = 100; // names that happen to be taken

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

// A name in a folder that no other file has.
QByteArray ownNameIn(const QByteArray &folder)
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return folder + '/' + Prefix + QByteArray::number(number, 36) + Suffix;
}

// The name under which the system shows a descriptor; empty where it does not.
QByteArray linkOf(int descriptor)
{
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    return ::access(link.constData(), F_OK) == 0 ? link : QByteArray();
}

bool giveName(const QByteArray &link, const QByteArray &name)
{
    return ::linkat(AT_FDCWD, link.constData(), AT_FDCWD, name.constData(),
                    AT_SYMLINK_FOLLOW) == 0;
}

// Tells removeLeftovers() that the file is no leftover. False where that came too late.
bool hold(int descriptor)
{
    struct stat status {};
    const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    return !locked || ::fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

} // namespace

FreshFile::~FreshFile()
{
    if (m_name.isEmpty())
        return;
    ::unlink(m_name.constData());
    forgetUnfinished(m_name);
}

bool FreshFile::open(const QByteArray &target, unsigned int permissions)
{
    m_target = target;
    m_folder = folderOf(target);
    return openUnnamed(permissions) || openNamed(permissions);
}

bool FreshFile::openUnnamed(unsigned int permissions)
{
    const int descriptor =
        ::open(m_folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, permissions);
    if (descriptor < 0)
        return false;
    if (linkOf(descriptor).isEmpty()) { // it could be given no name
        ::close(descriptor);
        return false;
    }
    hold(descriptor); // it may have a name of its own for a moment
    return adopt(descriptor);
}

bool FreshFile::openNamed(unsigned int permissions)
{
    for (int i = 0; i < Tries; ++i) {
        m_name = ownNameIn(m_folder);
        rememberUnfinished(m_name);
        const int descriptor = ::open(m_name.constData(),
                                      O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, permissions);
        const int error = errno;
        if (descriptor >= 0 && hold(descriptor))
            return adopt(descriptor);
        if (descriptor >= 0)
            ::close(descriptor);
        forgetUnfinished(m_name);
        m_name.clear();
        errno = error;
        if (descriptor < 0 && error != EEXIST)
            return false;
    }
    return false;
}

bool FreshFile::adopt(int descriptor)
{
    if (m_file.open(descriptor, QIODevice::ReadWrite | QIODevice::Unbuffered,
                    QFile::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
}

bool FreshFile::takePlace()
{
    if (!moveToTarget())
        return false;
    if (!m_name.isEmpty())
        forgetUnfinished(m_name);
    m_name.clear();
    return true;
}

bool FreshFile::moveToTarget()
{
    const FileReplacement guard;
    if (m_name.isEmpty()) {
        const QByteArray link = linkOf(m_file.handle());
        if (giveName(link, m_target))
            return true;
        if (errno != EEXIST)
            return false;
        // There is an earlier file, which only a file with a name can replace.
        const QByteArray name = ownNameIn(m_folder);
        if (!giveName(link, name))
            return false;
        m_name = name;
    }
    return ::rename(m_name.constData(), m_target.constData()) == 0;
}

EarlierFile::EarlierFile(const QByteArray &name)
    : m_name(name), m_second(ownNameIn(folderOf(name))),
      m_wasThere(::access(name.constData(), F_OK) == 0)
{
    rememberUnfinished(m_second);
    if (::link(m_name.constData(), m_second.constData()) != 0) {
        forgetUnfinished(m_second);
        m_second.clear();
    }
}

EarlierFile::~EarlierFile()
{
    if (m_second.isEmpty())
        return;
    ::unlink(m_second.constData());
    forgetUnfinished(m_second);
}

void EarlierFile::putBack() const
{
    const FileReplacement guard;
    if (!m_second.isEmpty())
        ::rename(m_second.constData(), m_name.constData());
    else if (!m_wasThere)
        ::unlink(m_name.constData());
}

void removeLeftovers(const QString &folder)
{
    const QDir dir(folder);
    const QString pattern =
        QLatin1String(Prefix) + QLatin1Char('*') + QLatin1String(Suffix);
    QStringList patterns;
    patterns.append(pattern); // a list in braces does not bear a lack of memory
    for (const QString &entry : dir.entryList(patterns, QDir::Files | QDir::Hidden)) {
        const QByteArray name = QFile::encodeName(dir.filePath(entry));
        const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0)
            continue;
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) // its maker is gone
            ::unlink(name.constData());
        ::close(descriptor);
    }
}
