#include "importers/sdtsunits.h"

#include <QSettings>

#include <algorithm>

QList<SdtsUnit> sdtsUnits()
{
    QList<SdtsUnit> units = {{"millimeters", 1.0},  {"centimeters", 10.0},
                             {"decimeters", 100.0}, {"meters", 1000.0},
                             {"mils", 0.0254},      {"inches", 25.4},
                             {"feet", 304.8},       {"yards", 914.4}};
    const QSettings settings("Kolvenar", "Zephrant");
    const QString name = settings.value("userDefinedUnitName").toString();
    if (!name.isEmpty())
        units.append({name, settings.value("userDefinedUnitScale", 1.0).toDouble()});
    return units;
}

double calibrationFactor(const QString &inputUnit, double outMillimeters)
{
    const QList<SdtsUnit> units = sdtsUnits();
    const auto found =
        std::find_if(units.begin(), units.end(), [&inputUnit](const SdtsUnit &unit) {
            return unit.name.compare(inputUnit, Qt::CaseInsensitive) == 0;
        });
    return (found == units.end() ? 1.0 : found->millimeters) / outMillimeters;
}
