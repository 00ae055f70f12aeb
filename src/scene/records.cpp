#include "scene/controlpoint.h"
#include "scene/waypoint.h"
#include "scene/waypointlevel.h"

#include <QString>
#include <QTextStream>

void ControlPoint::write(QTextStream &stream, int index) const
{
    stream << QStringLiteral("cPunkt%1=%2,%3,%4")
                  .arg(index, 2, 10, QLatin1Char('0'))
                  .arg(x)
                  .arg(y)
                  .arg(z)
           << Qt::endl;
}

void Waypoint::write(QTextStream &stream, int index) const
{
    const QString key = QStringLiteral("Punkt%1").arg(index, 2, 10, QLatin1Char('0'));
    stream << QStringLiteral("%1=%2,%3").arg(key).arg(x).arg(y) << Qt::endl
           << QStringLiteral("%1_z=%2").arg(key).arg(z) << Qt::endl
           << QStringLiteral("%1_i=%2").arg(key).arg(i, 0, 'g') << Qt::endl
           << QStringLiteral("%1_a=%2").arg(key).arg(a, 0, 'g') << Qt::endl
           << QStringLiteral("%1_p=%2").arg(key).arg(p, 0, 'g') << Qt::endl;
}

int normalizeWaypoints(QList<Waypoint> &waypoints, int controlPointCount)
{
    if (controlPointCount < 4 || waypoints.size() < waypointCount(0)) {
        waypoints.clear();
        return 0;
    }
    int level = 0;
    while (level < MaxWaypointLevel && waypointCount(level + 1) <= waypoints.size())
        ++level;
    waypoints.resize(waypointCount(level));
    return level;
}
