#include "terrain/terrainreport.h"

#include "terrain/terrainsource.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QRegularExpression>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Terrain", source);
}

QString metres(double height) { return QString::number(height, 'f', 2); }

} // namespace

QJsonObject TerrainReport::asJson() const
{
    QJsonObject object;
    object.insert("file", files.size() == 1
                              ? QJsonValue(files.first())
                              : QJsonValue(QJsonArray::fromStringList(files)));
    if (!written.isEmpty())
        object.insert("written", QJsonArray::fromStringList(written));
    object.insert("columns", size.width());
    object.insert("rows", size.height());
    object.insert("cellX", cellX);
    object.insert("cellY", cellY);
    object.insert("crs", crs);
    object.insert("unit", heightUnit > 0.0 ? QJsonValue(heightUnit) : QJsonValue(unit));
    object.insert("minimum", range ? QJsonValue(range->first) : QJsonValue());
    object.insert("maximum", range ? QJsonValue(range->second) : QJsonValue());
    object.insert("voids", voids);
    object.insert("type", type);
    object.insert("pointsRead", pointsRead);
    object.insert("pointsUsed", pointsUsed);
    object.insert("cut", cut);
    object.insert("overlaps", overlaps);
    object.insert("gaps", gaps);
    if (isApproximate)
        object.insert("approximate", true);
    if (!notes.isEmpty())
        object.insert("notes", QJsonArray::fromStringList(notes));
    return object;
}

QString TerrainReport::asLine() const
{
    QStringList parts;
    parts << text("%1 rows, %2 columns").arg(size.height()).arg(size.width());
    if (range)
        parts << text("%1 to %2 m").arg(metres(range->first), metres(range->second));
    parts << text("%1 voids").arg(voids);
    if (pointsRead > 0)
        parts << text("%1 of %2 points used").arg(pointsUsed).arg(pointsRead);
    if (cut > 0)
        parts << text("%1 heights cut").arg(cut);
    return parts.join(QLatin1String(", "));
}

TerrainReport reportOf(const TerrainFacts &facts, const TerrainScan &scan)
{
    TerrainReport report;
    report.files = facts.files;
    report.size = facts.size;
    report.cellX = facts.cellX;
    report.cellY = facts.cellY;
    report.crs = facts.crsName;
    report.unit = facts.unit;
    report.type = facts.type;
    report.pointsRead = facts.pointsRead;
    report.pointsUsed = facts.pointsUsed;
    report.overlaps = facts.overlaps;
    report.gaps = facts.gaps;
    report.notes = facts.notes;
    report.range = scan.range;
    report.voids = scan.voids;
    report.isApproximate = scan.isApproximate;
    return report;
}

QString crsNameOf(const QString &wellKnownText)
{
    // The code of the whole stands at the end of its text, those of its parts before it.
    static const QRegularExpression code(
        QStringLiteral(R"re((?:AUTHORITY|ID)\["(\w+)",\s*"?(\w+)"?\]\s*\]\s*$)re"));
    static const QRegularExpression name(QStringLiteral(R"re(^\s*\w+\["([^"]*)")re"));
    const QRegularExpressionMatch codeFound = code.match(wellKnownText);
    if (codeFound.hasMatch())
        return codeFound.captured(1) + QLatin1Char(':') + codeFound.captured(2);
    const QRegularExpressionMatch nameFound = name.match(wellKnownText);
    return nameFound.hasMatch() ? nameFound.captured(1) : wellKnownText.simplified();
}
