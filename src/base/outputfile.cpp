#include "base/outputfile.h"

#include <cerrno>

#include <unistd.h>

bool syncToDisk(int descriptor)
{
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

void OutputFile::fail(int systemError)
{
    if (m_failed)
        return;
    m_failed = true;
    m_reason = systemError != 0 ? qt_error_string(systemError) : errorString();
}

qint64 OutputFile::writeData(const char *data, qint64 length)
{
    errno = 0;
    const qint64 written = QFile::writeData(data, length);
    if (written == length)
        return written;
    fail(errno);
    return -1;
}

bool OutputFile::finish()
{
    errno = 0;
    if (!m_failed && (!flush() || !syncToDisk(handle())))
        fail(errno);
    return !m_failed;
}
