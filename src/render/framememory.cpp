#include "render/framememory.h"

#include <QFile>

#include <limits>

namespace {

// Bytes that can be had without driving the machine out of memory. Asking for them
// is no test: the system grants more than it has and kills who then uses it.
qint64 availableBytes()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return std::numeric_limits<qint64>::max();
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (!line.startsWith("MemAvailable:"))
            continue;
        const QByteArray amount = line.mid(13).simplified().split(' ').value(0);
        return amount.toLongLong() * 1024;
    }
    return std::numeric_limits<qint64>::max();
}

} // namespace

bool frameFitsMemory(int width, int height)
{
    // Small frames need no look at the machine.
    constexpr qint64 Small = qint64(256) << 20;
    const qint64 bytes = qint64(width) * height * 4;
    return bytes <= Small || bytes <= availableBytes();
}
