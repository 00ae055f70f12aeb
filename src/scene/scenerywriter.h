#pragma once

#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QList>

class QTextStream;
class SceneryData;

/// Writes a scenery file, reals with six significant digits.
void writeScenery(QTextStream &stream, const SceneryData &data,
                  const QList<Waypoint> &waypoints,
                  const QList<ControlPoint> &controlPoints);
