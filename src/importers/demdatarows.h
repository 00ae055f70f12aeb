#pragma once

#include <QString>
#include <QVector>

class UsgsDemData;

/// A line of the table that shows a DEM header to the user.
struct DemDataRow {
    QString label;
    QString value;
};

/// The whole table, in the order in which it is shown.
[[nodiscard]] QVector<DemDataRow> demDataRows(const UsgsDemData &data);
