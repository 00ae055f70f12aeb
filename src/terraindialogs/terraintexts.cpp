#include "terraindialogs/terraintexts.h"

#include <QCoreApplication>

#include <cmath>

namespace {

QString tr(const char *text) { return QCoreApplication::translate("TerrainTexts", text); }

QString metresText(double metres)
{
    return metres >= 10000.0 ? tr("%1 km").arg(shortNumber(metres / 1000.0))
                             : tr("%1 m").arg(shortNumber(metres));
}

QString cellsText(const QSize &size)
{
    return tr("%1 by %2 cells").arg(size.width()).arg(size.height());
}

// Some files have a system that tells no more than its formula.
QString systemText(const QString &name)
{
    const bool hasName = !name.isEmpty() && name != QLatin1String("unnamed") &&
                         name != QLatin1String("unknown");
    return hasName ? name : tr("a reference system without a name");
}

// In percent, with two digits that count.
QString shareText(double share)
{
    const double percent = 100.0 * share;
    return percent < 10.0 ? QString::number(percent, 'g', 2)
                          : QString::number(percent, 'f', 0);
}

QString voidsText(const TerrainFacts &facts, const TerrainScan &scan)
{
    if (scan.voids == 0)
        return tr("no voids");
    const double all = double(facts.size.width()) * double(facts.size.height());
    return tr("%1 voids (%2 %)").arg(scan.voids).arg(shareText(double(scan.voids) / all));
}

} // namespace

QString shortNumber(double number)
{
    if (number == 0.0 || !std::isfinite(number))
        return QString::number(number);
    const int digits =
        std::clamp(4 - int(std::floor(std::log10(std::abs(number)))), 0, 9);
    QString text = QString::number(number, 'f', digits);
    while (text.contains(QLatin1Char('.')) &&
           (text.endsWith(QLatin1Char('0')) || text.endsWith(QLatin1Char('.'))))
        text.chop(1);
    return text;
}

QString factsText(const TerrainFacts &facts, const std::optional<TerrainScan> &scan)
{
    QStringList lines;
    const QString step = facts.isGeographic ? tr("%1 by %2 degrees")
                                            : (facts.crs.isEmpty() ? tr("%1 by %2 units")
                                                                   : tr("%1 by %2"));
    lines << tr("%1 of %2")
                 .arg(cellsText(facts.size),
                      step.arg(shortNumber(facts.cellX), shortNumber(facts.cellY)));
    lines << (facts.crs.isEmpty() ? tr("no reference system: cells count as metres")
                                  : systemText(facts.crsName));
    lines << tr("%1, heights in %2")
                 .arg(facts.type, facts.unit.isEmpty() ? tr("metres") : facts.unit);
    if (facts.pointsRead > 0)
        lines << tr("%1 of %2 points used").arg(facts.pointsUsed).arg(facts.pointsRead);
    if (scan && scan->range)
        lines << tr("%1 to %2 m, %3%4")
                     .arg(shortNumber(scan->range->first),
                          shortNumber(scan->range->second), voidsText(facts, *scan),
                          scan->isApproximate ? tr(" (approximate)") : QString());
    else if (scan)
        lines << tr("nothing but voids");
    if (facts.overlaps > 0)
        lines << tr("%1 cells lie in more than one file").arg(facts.overlaps);
    if (facts.gaps > 0)
        lines << tr("%1 cells lie in no file").arg(facts.gaps);
    lines << facts.notes;
    return lines.join(QLatin1Char('\n'));
}

QString gridText(const OutputGrid &grid)
{
    return tr("%1 by %2 on the ground, %3 of %4 by %5")
        .arg(metresText(grid.metresX * grid.size.width()),
             metresText(grid.metresY * grid.size.height()), cellsText(grid.size),
             metresText(grid.metresX), metresText(grid.metresY));
}

QString placeText(const TerrainFacts &facts, const QPointF &cell,
                  std::optional<double> metres)
{
    const GeoTransform &t = facts.transform;
    const double x = t[0] + cell.x() * t[1] + cell.y() * t[2];
    const double y = t[3] + cell.x() * t[4] + cell.y() * t[5];
    const int digits = facts.isGeographic ? 5 : 1;
    const QString height =
        metres ? tr("%1 m").arg(shortNumber(*metres)) : tr("no height");
    return tr("%1, %2: %3")
        .arg(QString::number(x, 'f', digits), QString::number(y, 'f', digits), height);
}
