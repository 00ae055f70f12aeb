#pragma once

#include <QList>
#include <QString>

/// A unit of elevations.
struct SdtsUnit {
    QString name;
    double millimeters = 1.0; // in one unit
};

/// The units that an elevation file can be written in, and at the end the one that
/// the user has defined in the settings, if any.
[[nodiscard]] QList<SdtsUnit> sdtsUnits();

/// The factor from a unit of elevations to one of so many millimeters. The unit goes by
/// its name in any case; elevations of an unknown one are taken for millimeters.
[[nodiscard]] double calibrationFactor(const QString &inputUnit, double outMillimeters);
