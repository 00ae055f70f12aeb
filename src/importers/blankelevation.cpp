#include "importers/blankelevation.h"

#include "base/memorybudget.h"

#include <QObject>

#include <limits>

ElevationImage blankElevation(double columns, double rows)
{
    // Junk in a header may ask for any size. Memory would be promised for most of
    // them and be missing only when the pixels are written.
    constexpr double MostBytes = std::numeric_limits<qint32>::max();
    if (!(columns >= 1.0 && rows >= 1.0 && (columns * 3.0 + 3.0) * rows <= MostBytes))
        return {};
    if (!claimMemory(QObject::tr("An elevation file of %1 x %2 pixels")
                         .arg(columns, 0, 'f', 0)
                         .arg(rows, 0, 'f', 0),
                     static_cast<qint64>(columns * rows * 3.0)))
        return {};
    ElevationImage image(static_cast<int>(columns), static_cast<int>(rows),
                         QImage::Format_RGB888);
    image.clear(0xFF000000);
    return image;
}
