#include "faults/campaign.h"

#include "faults/folder.h"

#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr const char *KindNames[FaultKinds] = {"write",  "disk full", "flush",
                                               "rename", "create",    "allocation"};

// The frames that only carry an exception on.
bool isCarrier(const QString &frame)
{
    return frame.startsWith(QLatin1String("libc.")) ||
           frame.startsWith(QLatin1String("libstdc++")) ||
           frame.startsWith(QLatin1String("libgcc_s")) ||
           frame.startsWith(QLatin1String("libfaultlib"));
}

// The frames that did not bear the lack of memory.
QStringList frames(const QString &end)
{
    QStringList all = end.split(' ', Qt::SkipEmptyParts);
    while (!all.isEmpty() && isCarrier(all.constFirst()))
        all.removeFirst();
    return all;
}

// Whether they are those of a library, which is not ours to mend.
bool endedInLibrary(const QString &end)
{
    const QStringList all = frames(end);
    return !all.isEmpty() && all.constFirst().startsWith(QLatin1String("lib"));
}

QString firstFrames(const QString &end)
{
    return frames(end).mid(0, 3).join(QLatin1String(" < "));
}

// The n of so many allocations from the first on and as many spread over the rest.
std::vector<long> chosen(long count, long some)
{
    std::vector<long> all;
    for (long n = 1; n <= std::min(count, some); ++n)
        all.push_back(n);
    const long rest = std::max(count - some, 0l);
    const long spread = std::min(rest, some);
    for (long k = 0; k < spread; ++k)
        all.push_back(some + 1 + k * rest / spread);
    return all;
}

class Campaign {
public:
    explicit Campaign(const OperationEntry &entry)
        : m_name(entry.name), m_operation(entry.make())
    {
        m_operation->prepare(m_dir.path());
        m_prepared = readFolder(m_dir.path());
    }

    // Learns what the operation does when all goes well.
    bool rehearse()
    {
        const Attempt good = m_operation->attempt({});
        m_after = readFolder(m_dir.path());
        m_allocations = good.counts[FaultAllocation];
        for (const QString &target : m_operation->targets())
            if (!m_after.contains(target) || m_after[target] == m_prepared[target])
                fail({}, QStringLiteral("%1 is not written at all").arg(target));
        if (!good.ended || !good.told.isEmpty())
            fail({}, QStringLiteral("goes wrong without a fault: ") +
                         good.told.join(QLatin1Char(' ')) + good.end);
        return m_result.failures.isEmpty();
    }

    // Of the earlier contents, with or without the targets, and on a file system that
    // knows or does not know files without a name.
    void tryFiles(FaultKind kind, bool replaces, bool unnamedFiles, long some)
    {
        FolderContents before = m_prepared;
        if (!replaces)
            for (const QString &target : m_operation->targets())
                before.remove(target);
        writeFolder(m_dir.path(), before);
        const long count =
            m_operation->attempt({kind, 0, unnamedFiles}).counts[size_t(kind)];
        begin();
        for (const long n : chosen(count, some))
            attempt({kind, n, unnamedFiles}, before);
        end(QLatin1String(KindNames[kind]) +
                QLatin1String(replaces ? "" : ", no earlier file") +
                QLatin1String(unnamedFiles ? "" : ", named files"),
            count);
    }

    void tryAllocations(long some)
    {
        begin();
        for (const long n : chosen(m_allocations, some))
            attempt({FaultAllocation, n, true}, m_prepared);
        end(QStringLiteral("allocation"), m_allocations);
    }

    void tryOne(const Fault &fault) { attempt(fault, m_prepared); }
    [[nodiscard]] const CampaignResult &result() const { return m_result; }

private:
    void begin() { m_tried = m_told = 0; }
    void end(const QString &kind, long count)
    {
        m_result.table += QStringLiteral("%1 %2 %3 of %4 struck, %5 told\n")
                              .arg(m_name, -24)
                              .arg(kind, -40)
                              .arg(m_tried, 5)
                              .arg(count, 5)
                              .arg(m_told, 5);
    }

    void attempt(const Fault &fault, const FolderContents &before)
    {
        writeFolder(m_dir.path(), before);
        const Attempt attempt = m_operation->attempt(fault);
        look(fault, attempt, before);
        m_tried += attempt.happened;
        m_told += !attempt.told.isEmpty();
    }

    void look(const Fault &fault, const Attempt &attempt, const FolderContents &before)
    {
        const FolderContents found = readFolder(m_dir.path());
        const QStringList targets = m_operation->targets();
        bool allNew = true;
        for (const QString &target : targets) {
            const bool isNew = isSame(found, m_after, target);
            if (!isNew && !isSame(found, before, target))
                fail(fault, QStringLiteral("%1 is not whole").arg(target));
            allNew = allNew && isNew;
        }
        for (const QString &file : found.keys())
            if (!targets.contains(file) && !isSame(found, before, file))
                fail(fault, QStringLiteral("leaves ") + file);
        if (!attempt.ended)
            return lookAtEnd(fault, attempt.end);
        if (!allNew && attempt.told.isEmpty())
            fail(fault, QStringLiteral("is not told"));
        if (attempt.happened || allNew)
            return;
        fail(fault, QStringLiteral("goes wrong without a fault"));
    }

    void lookAtEnd(const Fault &fault, const QString &end)
    {
        if (fault.kind == FaultAllocation && endedInLibrary(end))
            ++m_result.endsInLibraries[firstFrames(end)];
        else
            fail(fault, end);
    }

    static bool isSame(const FolderContents &one, const FolderContents &other,
                       const QString &file)
    {
        return one.contains(file) == other.contains(file) &&
               one.value(file) == other.value(file);
    }
    void fail(const Fault &fault, const QString &text)
    {
        m_result.failures << describe(fault) + ": " + text;
    }
    [[nodiscard]] QString describe(const Fault &fault) const
    {
        return QStringLiteral("%1, %2 %3%4")
            .arg(m_name, QLatin1String(KindNames[fault.kind]))
            .arg(fault.n)
            .arg(fault.unnamedFiles ? QString() : QStringLiteral(", named files"));
    }

    QString m_name;
    QTemporaryDir m_dir;
    std::unique_ptr<Operation> m_operation;
    FolderContents m_prepared, m_after;
    long m_allocations = 0;
    CampaignResult m_result;
    int m_tried = 0, m_told = 0;
};

} // namespace

CampaignResult runCampaign(const OperationEntry &entry, const CampaignOptions &options)
{
    Campaign campaign(entry);
    if (!campaign.rehearse())
        return campaign.result();
    for (const FaultKind kind :
         {FaultWrite, FaultDiskFull, FaultFlush, FaultRename, FaultCreate}) {
        campaign.tryFiles(kind, true, true, options.files);
        campaign.tryFiles(kind, false, true, options.files);
        campaign.tryFiles(kind, true, false, options.files);
        campaign.tryFiles(kind, false, false, options.files);
    }
    campaign.tryAllocations(options.allocations);
    return campaign.result();
}

CampaignResult runOne(const OperationEntry &entry, const Fault &fault)
{
    Campaign campaign(entry);
    if (campaign.rehearse())
        campaign.tryOne(fault);
    return campaign.result();
}
