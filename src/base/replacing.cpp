#include "base/replacing.h"

#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int MostLinks = 40; // as many as the system follows

} // namespace

QString linkTarget(const QString &name)
{
    QString target = name;
    for (int i = 0; i < MostLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

bool mayBeWritten(const QByteArray &path)
{
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CLOEXEC);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

void takeOver(int file, const struct stat &earlier)
{
    [[maybe_unused]] const int owned = ::fchown(file, earlier.st_uid, earlier.st_gid);
    [[maybe_unused]] const int permitted = ::fchmod(file, earlier.st_mode & 0777);
}
