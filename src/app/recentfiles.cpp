#include "app/recentfiles.h"

#include "base/appsettings.h"

#include <algorithm>

namespace {

QString keyOf(int index) { return QStringLiteral("mostRecentFile%1").arg(index + 1); }

} // namespace

RecentFiles RecentFiles::read()
{
    const AppSettings settings;
    RecentFiles files;
    for (int i = 0; i < Count; ++i)
        files.names[size_t(i)] = settings.value(keyOf(i)).toString();
    return files;
}

void RecentFiles::write() const
{
    AppSettings settings;
    for (int i = 0; i < Count; ++i)
        settings.setValue(keyOf(i), names[size_t(i)]);
}

void RecentFiles::addFirst(const QString &name)
{
    // The last slot gives way whether it holds the name or another.
    const auto place = std::find(names.begin(), names.end() - 1, name);
    std::move_backward(names.begin(), place, place + 1);
    names.front() = name;
}
