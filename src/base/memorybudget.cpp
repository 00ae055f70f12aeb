#include "base/memorybudget.h"

#include "base/notices.h"

#include <QFile>
#include <QObject>

#include <algorithm>
#include <limits>
#include <optional>

#include <sys/resource.h>

namespace {

constexpr qint64 NoLimit = std::numeric_limits<qint64>::max();
// Claims up to this are made whatever the machine has left, as ever.
constexpr qint64 Small = qint64(256) << 20;

qint64 kilobytesIn(const QByteArray &amount)
{
    return amount.simplified().split(' ').value(0).toLongLong() * 1024;
}

struct Machine {
    qint64 physical = NoLimit;
    qint64 available = NoLimit;
};

Machine machine()
{
    Machine found;
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return found;
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (line.startsWith("MemTotal:"))
            found.physical = kilobytesIn(line.mid(9));
        if (line.startsWith("MemAvailable:"))
            found.available = kilobytesIn(line.mid(13));
    }
    return found;
}

// The number in a file of the control group file system; none for "max" and no file.
std::optional<qint64> numberIn(const QString &name)
{
    QFile file(name);
    bool ok = false;
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const qint64 number = file.readLine().trimmed().toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

// A container sees the memory of the whole machine and is ended at its own limit.
void applyControlGroup(Machine &found)
{
    const QString folder = QStringLiteral("/sys/fs/cgroup/");
    const bool second = QFile::exists(folder + QStringLiteral("cgroup.controllers"));
    const auto limit =
        numberIn(folder + (second ? QStringLiteral("memory.max")
                                  : QStringLiteral("memory/memory.limit_in_bytes")));
    const auto used =
        numberIn(folder + (second ? QStringLiteral("memory.current")
                                  : QStringLiteral("memory/memory.usage_in_bytes")));
    if (!limit)
        return;
    found.physical = std::min(found.physical, *limit);
    // Of what is in use, pages of files can be given back, so a part of it counts.
    if (used)
        found.available = std::min(found.available, std::max(*limit - *used, *limit / 4));
}

void applyProcessLimits(Machine &found)
{
    for (const auto kind : {RLIMIT_AS, RLIMIT_DATA}) {
        rlimit limit{};
        if (::getrlimit(kind, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
            found.physical =
                std::min(found.physical, static_cast<qint64>(limit.rlim_cur));
    }
}

// What the environment says, for tests and for those who know better.
std::optional<qint64> wantedBudget()
{
    bool ok = false;
    const qint64 wanted = qEnvironmentVariable("ZEPHRANT_MEMORY_BUDGET").toLongLong(&ok);
    return ok && wanted > 0 ? std::optional(wanted) : std::nullopt;
}

} // namespace

qint64 memoryBudget()
{
    if (const auto wanted = wantedBudget())
        return *wanted;
    Machine found = machine();
    applyControlGroup(found);
    applyProcessLimits(found);
    return std::max(std::min(found.physical / 2, found.available), Small);
}

bool fitsMemory(qint64 bytes) { return bytes <= memoryBudget(); }

QString memoryText(qint64 bytes)
{
    constexpr double Thousand = 1000.0;
    constexpr double ShownAsThousand = 999.95; // with one decimal
    const char *const units[] = {"kB", "MB", "GB", "TB"};
    double amount = static_cast<double>(bytes) / Thousand;
    int unit = 0;
    while (amount >= ShownAsThousand && unit < 3) {
        amount /= Thousand;
        ++unit;
    }
    return QString::number(amount, 'f', 1) + QLatin1Char(' ') +
           QLatin1String(units[unit]);
}

bool claimMemory(const QString &what, qint64 bytes)
{
    const qint64 budget = memoryBudget();
    if (bytes <= budget)
        return true;
    tellNotice(QObject::tr("%1 would take %2 of memory; the budget is %3.")
                   .arg(what, memoryText(bytes), memoryText(budget)));
    return false;
}
