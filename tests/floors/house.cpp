#include "floors/house.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

QStringList names(const QString &text)
{
    static const QRegularExpression between(QStringLiteral("[\\s,]+"));
    return text.split(between, Qt::SkipEmptyParts);
}

void addFloor(Plan &plan, const QString &line)
{
    static const QRegularExpression gap(QStringLiteral("\\s\\s"));
    const QStringList folders = names(line.section(gap, 0, 0));
    if (!folders.isEmpty())
        plan.floors.append(folders);
}

void addModule(Plan &plan, const QString &line)
{
    const QString module = line.section(QLatin1Char(' '), 0, 0);
    for (const QString &folder : names(line.section(QLatin1Char(' '), 1)))
        plan.module.insert(folder, module);
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

int Plan::floorOf(const QString &folder) const
{
    for (int floor = 0; floor < floors.size(); ++floor)
        if (floors[floor].contains(folder))
            return floor;
    return -1;
}

Plan planOf(const QString &page)
{
    const QString fence = QStringLiteral("```");
    Plan plan;
    QString block; // the fence that has been opened
    for (const QString &line : page.split(QLatin1Char('\n'))) {
        if (line.startsWith(fence)) {
            // Other plain blocks than the first are pictures.
            const bool isPicture = line == fence && !plan.floors.isEmpty();
            block = !block.isEmpty() ? QString()
                                     : (isPicture ? QStringLiteral("picture") : line);
        } else if (block == fence) {
            addFloor(plan, line);
        } else if (block == fence + QStringLiteral("toolkit")) {
            addModule(plan, line);
        }
    }
    return plan;
}

Links linksOf(const QString &lines)
{
    Links links;
    for (const QString &line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString kind = line.section(QLatin1Char(' '), 0, 0);
        const QString subject = line.section(QLatin1Char(' '), 1, 1);
        const QString object = line.section(QLatin1Char(' '), 2);
        if (kind == QLatin1String("object"))
            links.objects.insert(subject);
        else if (kind == QLatin1String("headers"))
            links.headers.insert(subject, object);
        else
            links.all[subject].insert(object);
        if (kind == QLatin1String("public"))
            links.shown[subject].insert(object);
    }
    return links;
}

QString Include::target() const
{
    return isQuoted && name.contains(QLatin1Char('/'))
               ? name.section(QLatin1Char('/'), 0, 0)
               : QString();
}

Sources sourcesBelow(const QString &directory)
{
    static const QRegularExpression include(
        QStringLiteral("^\\s*#\\s*include\\s*([<\"])([^>\"]+)"),
        QRegularExpression::MultilineOption);
    Sources sources;
    QDirIterator each(directory, {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                      QDir::Files, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        const QString file = QDir(directory).relativeFilePath(each.next());
        sources.files.append(file);
        auto found = include.globalMatch(contents(each.filePath()));
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            sources.includes.append({file, file.section(QLatin1Char('/'), 0, 0),
                                     match.captured(2),
                                     match.captured(1) == QLatin1String("\"")});
        }
    }
    sources.files.sort();
    return sources;
}
