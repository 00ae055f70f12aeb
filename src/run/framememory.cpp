#include "run/framememory.h"

#include "base/memorybudget.h"

#include <QObject>

bool frameFitsMemory(const QSize &size, bool halved, bool shown)
{
    const qint64 bytes = qint64(size.width()) * size.height() * 4;
    const qint64 claim = bytes + (halved ? bytes / 4 : 0) + (shown ? bytes : 0);
    const QString frame = halved || shown
                              ? QObject::tr("A frame of %1 x %2 pixels with its copies")
                              : QObject::tr("A frame of %1 x %2 pixels");
    return claimMemory(frame.arg(size.width()).arg(size.height()), claim);
}
