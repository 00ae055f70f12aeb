#include "floors/floors.h"

#include <QFile>

namespace {

const QString Widgets = QStringLiteral("Qt6::Widgets");

/// How much of the toolkit a module stands for; each holds those before it.
int rank(const QString &module)
{
    static const QStringList modules{QStringLiteral("none"), QStringLiteral("Qt6::Core"),
                                     QStringLiteral("Qt6::Gui"), Widgets};
    return int(modules.indexOf(module));
}

/// The module of the toolkit that a header belongs to; empty for any other header.
QString moduleOf(const Include &include, const Links &links)
{
    if (include.isQuoted)
        return include.name.startsWith(QLatin1String("ui_")) ? Widgets : QString();
    for (auto each = links.headers.begin(); each != links.headers.end(); ++each) {
        const QString own = each.key().mid(int(QString("Qt6::").size()));
        const QString prefix = QStringLiteral("Qt") + own;
        if (include.name == prefix ||
            include.name.startsWith(prefix + QLatin1Char('/')) ||
            QFile::exists(each.value() + QLatin1Char('/') + include.name))
            return each.key();
    }
    return {};
}

/// All that a folder links, directly or by others.
void collectLinks(const QString &folder, const Links &links, QSet<QString> &found)
{
    for (const QString &library : links.all.value(folder))
        if (!found.contains(library)) {
            found.insert(library);
            collectLinks(library, links, found);
        }
}

bool runsUp(const Plan &plan, const QString &from, const QString &to)
{
    return from != to && plan.floorOf(to) >= plan.floorOf(from);
}

QSet<QString> foldersOf(const Sources &sources)
{
    QSet<QString> folders;
    for (const QString &file : sources.files)
        folders.insert(file.section(QLatin1Char('/'), 0, 0));
    return folders;
}

} // namespace

QStringList strangers(const Plan &plan, const Sources &sources)
{
    QStringList faults;
    const QSet<QString> folders = foldersOf(sources);
    for (const QString &folder : folders)
        if (plan.floorOf(folder) < 0)
            faults += QStringLiteral("%1 stands on no floor").arg(folder);
    QSet<QString> seen;
    for (const QStringList &floor : plan.floors)
        for (const QString &name : floor) {
            if (!folders.contains(name))
                faults += QStringLiteral("%1 is no folder with sources").arg(name);
            if (seen.contains(name))
                faults += QStringLiteral("%1 stands twice").arg(name);
            seen.insert(name);
        }
    return faults;
}

QStringList wrongArrows(const Plan &plan, const Links &links, const Sources &sources)
{
    QStringList faults;
    for (const Include &include : sources.includes) {
        const QString target = include.target();
        if (plan.floorOf(target) >= 0 && runsUp(plan, include.folder, target))
            faults += QStringLiteral("%1 includes \"%2\", which stands no lower")
                          .arg(include.file, include.name);
    }
    for (auto each = links.all.begin(); each != links.all.end(); ++each)
        for (const QString &library : each.value())
            if (plan.floorOf(library) >= 0 && runsUp(plan, each.key(), library))
                faults += QStringLiteral("%1 links %2, which stands no lower")
                              .arg(each.key(), library);
    return faults;
}

QStringList unlinkedIncludes(const Links &links, const Sources &sources)
{
    const QSet<QString> folders = foldersOf(sources);
    QStringList faults;
    for (const Include &include : sources.includes) {
        const QString target = include.target();
        const QString told =
            QStringLiteral("%1 includes \"%2\", ").arg(include.file, include.name);
        if (include.isQuoted && !folders.contains(target) &&
            !include.name.startsWith(QLatin1String("ui_")))
            faults += told + QStringLiteral("which begins with no folder");
        if (target == include.folder || !folders.contains(target))
            continue;
        if (!links.all.value(include.folder).contains(target))
            faults += told + QStringLiteral("which its folder does not link");
        else if (include.file.endsWith(QLatin1String(".h")) &&
                 !links.shown.value(include.folder).contains(target))
            faults += told + QStringLiteral("which its folder links privately");
    }
    return faults;
}

QStringList unusedLinks(const Plan &plan, const Links &links, const Sources &sources)
{
    QMap<QString, QSet<QString>> used;
    for (const Include &include : sources.includes)
        used[include.folder] << include.target() << moduleOf(include, links);
    QStringList faults;
    for (auto each = links.all.begin(); each != links.all.end(); ++each)
        for (const QString &library : each.value()) {
            const bool counts = plan.floorOf(library) >= 0 || rank(library) >= 0;
            if (counts && library != each.key() && !links.objects.contains(library) &&
                !used.value(each.key()).contains(library))
                faults += QStringLiteral("%1 links %2 and does not use it")
                              .arg(each.key(), library);
        }
    return faults;
}

QStringList toolkitFaults(const Plan &plan, const Links &links, const Sources &sources)
{
    QStringList faults;
    for (const Include &include : sources.includes)
        if (rank(moduleOf(include, links)) > rank(plan.module.value(include.folder)))
            faults += QStringLiteral("%1 includes <%2>, which is of %3")
                          .arg(include.file, include.name, moduleOf(include, links));
    for (const QStringList &floor : plan.floors)
        for (const QString &folder : floor) {
            QSet<QString> linked;
            collectLinks(folder, links, linked);
            QString most = QStringLiteral("none");
            for (const QString &library : linked)
                if (rank(library) > rank(most))
                    most = library;
            if (most != plan.module.value(folder))
                faults += QStringLiteral("%1 links %2, and is told under \"%3\"")
                              .arg(folder, most, plan.module.value(folder));
        }
    return faults;
}

QStringList lonelyHeaders(const Sources &sources, const Sources &outside)
{
    QSet<QString> included;
    for (const Include &include : sources.includes + outside.includes)
        if (include.isQuoted && include.name != include.file)
            included.insert(include.name);
    QStringList faults;
    for (const QString &file : sources.files)
        if (file.endsWith(QLatin1String(".h")) && !included.contains(file))
            faults += QStringLiteral("nobody includes %1").arg(file);
    return faults;
}
