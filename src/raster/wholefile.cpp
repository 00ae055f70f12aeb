#include "raster/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

bool fail(const QFileDevice &file, QString *error)
{
    if (error)
        *error = file.errorString();
    return false;
}

bool writeInPlace(const QString &name, const std::function<bool(QIODevice &)> &write,
                  QString *error)
{
    QFile file(name);
    const bool written = file.open(QIODevice::WriteOnly) && write(file) && file.flush();
    return written || fail(file, error);
}

} // namespace

bool writeWholeFile(const QString &name, const std::function<bool(QIODevice &)> &write,
                    QString *error)
{
    const QFileInfo target(name);
    if (target.exists() && !target.isFile())
        return writeInPlace(name, write, error);
    if (target.exists()) {
        // Replacing asks for leave to write the folder alone, not the file.
        QFile earlier(name);
        if (!earlier.open(QIODevice::Append))
            return fail(earlier, error);
    }
    QSaveFile file(name);
    file.setDirectWriteFallback(true); // a folder that takes no new files
    const bool written = file.open(QIODevice::WriteOnly) && write(file) && file.commit();
    return written || fail(file, error);
}
