#pragma once

#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>
#include <QString>
#include <QStringView>

class SceneryData;

/// Highest index of a waypoint or control point that a file may name. A line that
/// names a higher one is an unknown key, or one line could take all memory.
constexpr int MaxListIndex = 65535;

/// Takes the lines of a scenery file into parameters and lists, which it borrows.
class SceneryReader {
public:
    enum class Result {
        Rejected,
        Accepted,
        ObsoleteFormatOff, // accepted: the obsolete output format, not selected
        ObsoleteFormatOn,  // accepted: it was selected; PNG stands in for it
    };

    SceneryReader(SceneryData &data, QList<ControlPoint> &controlPoints,
                  QList<Waypoint> &waypoints);

    /// Accepts one compacted line. `error` gets the complaint if it is rejected.
    [[nodiscard]] Result readLine(QStringView line, QString *error);
    [[nodiscard]] bool headSeen() const { return m_headSeen; }

private:
    [[nodiscard]] bool readScalar(QStringView key, QStringView value, QString *error,
                                  bool *known);
    [[nodiscard]] bool readWaypoint(QStringView line, QString *error, bool *known);
    [[nodiscard]] bool readControlPoint(QStringView line, QString *error, bool *known);

    SceneryData &m_data;
    QList<ControlPoint> &m_controlPoints;
    QList<Waypoint> &m_waypoints;
    bool m_headSeen = false;
};
