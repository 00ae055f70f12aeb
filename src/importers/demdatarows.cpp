#include "importers/demdatarows.h"

#include "base/truncate.h"
#include "importers/usgsdemdata.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int ArcSeconds = 3; // a planimetric units code

QString tr(const char *text)
{
    return QCoreApplication::translate("DemDataDialog", text);
}

QString zeroFilled(int value, int places)
{
    return QString("%1").arg(value, places, 10, QLatin1Char('0'));
}

QString fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

// Degrees, minutes and seconds to four decimals, as the header holds them.
QString geographicText(int degrees, int minutes, double seconds)
{
    constexpr int LastFraction = 9999;
    const double whole = std::trunc(seconds);
    // The header's decimals are no binary fractions: truncating would lose one.
    const int fraction =
        truncatedOrNearestNanLowest(std::abs(seconds - whole) * 10000.0 + 0.5);
    return QStringLiteral("%1°%2'%3\".%4")
        .arg(degrees)
        .arg(zeroFilled(minutes, 2), zeroFilled(truncatedOrNearestNanLowest(whole), 2),
             zeroFilled(std::clamp(fraction, 0, LastFraction), 4));
}

QString arcSecondsText(double value)
{
    const int seconds = truncatedOrNearestNanLowest(value);
    return QStringLiteral("%1°%2'%3\"")
        .arg(seconds / 3600)
        .arg(zeroFilled(std::abs(seconds / 60 % 60), 2),
             zeroFilled(std::abs(seconds % 60), 2));
}

QString cornerText(const UsgsDemData &data, int corner)
{
    const double easting = data.cornerEasting[corner];
    const double northing = data.cornerNorthing[corner];
    if (data.planimetricUnitsCode == ArcSeconds)
        return arcSecondsText(easting) + ", " + arcSecondsText(northing);
    return QString("%1 m, %2 m").arg(fixed(easting, 4), fixed(northing, 4));
}

class Rows {
public:
    void add(const char *label, const QString &value)
    {
        m_rows.append({tr(label), value});
    }
    void add(const char *label, int value) { add(label, QString::number(value)); }
    void add(const QString &label, const QString &value)
    {
        m_rows.append({label, value});
    }

    [[nodiscard]] const QVector<DemDataRow> &all() const { return m_rows; }

private:
    QVector<DemDataRow> m_rows;
};

void addOrigin(const UsgsDemData &data, Rows &rows)
{
    rows.add("File name", data.fileName);
    rows.add("Free format text", data.freeFormatText);
    rows.add("SE geographic corner longitude",
             geographicText(data.seLongitudeDegrees, data.seLongitudeMinutes,
                            data.seLongitudeSeconds));
    rows.add("SE geographic corner latitude",
             geographicText(data.seLatitudeDegrees, data.seLatitudeMinutes,
                            data.seLatitudeSeconds));
    rows.add("Process code", data.processCode);
    rows.add("Sectional indicator", data.sectionalIndicator);
    rows.add("Origin code", data.originCode);
    rows.add("DEM level code", data.demLevelCode);
    rows.add("Pattern code", data.patternCode);
}

void addGeometry(const UsgsDemData &data, Rows &rows)
{
    rows.add("Planimetric reference system code", data.planimetricReferenceSystemCode);
    rows.add("Zone code", data.zoneCode);
    for (int i = 0; i < static_cast<int>(std::size(data.mapProjectionParameters)); ++i)
        rows.add(tr("Map projection parameter[%1]").arg(i),
                 fixed(data.mapProjectionParameters[i], 2));
    rows.add("Units code for ground planimetric coordinates", data.planimetricUnitsCode);
    rows.add("Units code for elevation coordinates", data.elevationUnitsCode);
    rows.add("Number of sides in boundary polygon", data.numberOfSides);
    // A header may claim more sides than there are corners in it.
    const int corners = std::min(data.numberOfSides, UsgsDemData::CornerCount);
    for (int i = 0; i < corners; ++i)
        rows.add(tr("Corner %1").arg(i), cornerText(data, i));
    rows.add("Minimum elevation", fixed(data.minimumElevation, 2));
    rows.add("Maximum elevation", fixed(data.maximumElevation, 2));
    rows.add("Angle from ground to DEM reference (counterclockwise)",
             fixed(data.angle, 2));
    rows.add("Accuracy code", data.accuracyCode);
    rows.add("DEM spatial resolution (x, y, z)",
             QString("%1 %2 %3")
                 .arg(fixed(data.spatialResolution[0], 2),
                      fixed(data.spatialResolution[1], 2),
                      fixed(data.spatialResolution[2], 2)));
    rows.add("Number of rows in profile", data.numberOfRows);
    rows.add("Number of columns in profile", data.numberOfColumns);
}

void addQuality(const UsgsDemData &data, Rows &rows)
{
    rows.add("Largest primary contour interval", data.largestContourInterval);
    rows.add("Units of the map largest primary contour interval",
             data.largestContourUnits);
    rows.add("Smallest or only primary contour interval", data.smallestContourInterval);
    rows.add("Units of the map smallest primary contour interval",
             data.smallestContourUnits);
    rows.add("Data source date", zeroFilled(data.dataSourceDate, 4));
    rows.add("Data inspection/revision date", zeroFilled(data.inspectionDate, 4));
    rows.add("Data inspection/revision flag", QString::fromLatin1(data.inspectionFlag));
    rows.add("Data validation flag", data.validationFlag);
    rows.add("Suspect and void area flag", data.suspectVoidFlag);
    rows.add("Vertical datum", data.verticalDatum);
    rows.add("Horizontal datum", data.horizontalDatum);
    rows.add("Data edition code", data.dataEdition);
    rows.add("Percent void", data.percentVoid);
    rows.add("Edge match flags W, N, E, S", QString("%1, %2, %3, %4")
                                                .arg(data.edgeMatchFlags[0])
                                                .arg(data.edgeMatchFlags[1])
                                                .arg(data.edgeMatchFlags[2])
                                                .arg(data.edgeMatchFlags[3]));
    rows.add("Vertical datum shift", fixed(data.verticalDatumShift, 2));
}

} // namespace

QVector<DemDataRow> demDataRows(const UsgsDemData &data)
{
    Rows rows;
    addOrigin(data, rows);
    addGeometry(data, rows);
    addQuality(data, rows);
    return rows.all();
}
