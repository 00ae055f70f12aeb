#include "base/settingsfile.h"

#include "base/freshfile.h"
#include "base/notices.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QObject>
#include <QSettings>

#include <new>

namespace {

// Whether the file has a line for each key, and the last one its end.
bool isWhole(QSettings &settings)
{
    QFile file(settings.fileName());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    settings.setFallbacksEnabled(false); // keys that stand in other files
    qsizetype left = settings.allKeys().size();
    QByteArray last("\n"); // of a file without keys
    while (!file.atEnd()) {
        last = file.readLine();
        if (!last.startsWith('[') && last.contains('='))
            --left;
    }
    return left <= 0 && last.endsWith('\n');
}

// A lack of memory at the wrong moment leaves the toolkit's lock behind, for which it
// would then wait without end.
void removeOwnLock(const QString &file)
{
    const QString name = file + QLatin1String(".lock");
    qint64 owner = 0;
    QString host;
    QString program;
    const bool known = QLockFile(name).getLockInfo(&owner, &host, &program);
    // It may have been left before its owner was written into it.
    if (known ? owner == QCoreApplication::applicationPid() : QFileInfo(name).size() == 0)
        QFile::remove(name);
}

void replaceWhole(QSettings &settings)
{
    const QFileInfo info(settings.fileName());
    removeLeftovers(info.path());
    const QString real = info.canonicalFilePath(); // beyond links; empty if there is none
    const QByteArray file =
        QFile::encodeName(real.isEmpty() ? settings.fileName() : real);
    // A second name for the earlier file; without one its contents are lost all the same.
    const EarlierFile earlier(file);
    bool whole = false;
    try {
        settings.sync();
        whole = settings.status() == QSettings::NoError && isWhole(settings);
    } catch (const std::bad_alloc &) {
        // What came of it is not known, so the earlier file is taken.
    }
    if (whole)
        return;
    removeOwnLock(settings.fileName());
    earlier.putBack();
    tellNotice(QObject::tr("The settings could not be stored in \"%1\".")
                   .arg(settings.fileName()));
}

} // namespace

void storeSettings(QSettings &settings) noexcept
{
    try {
        replaceWhole(settings);
    } catch (const std::bad_alloc &) {
        // Nothing is lost but the change, and there is no memory to tell of it.
    }
}
