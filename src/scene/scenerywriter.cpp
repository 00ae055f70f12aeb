#include "scene/scenerywriter.h"

#include "scene/keyvalue.h"
#include "scene/scenerykeys.h"

#include <QTextStream>

namespace {

struct ValueWriter {
    QTextStream &stream;
    const SceneryData &data;

    void operator()(double SceneryData::*f) const { stream << data.*f; }
    void operator()(qint32 SceneryData::*f) const { stream << data.*f; }
    void operator()(QString SceneryData::*f) const { stream << data.*f; }
    void operator()(QRgb SceneryData::*f) const { stream << colourText(data.*f); }
    void operator()(bool SceneryData::*f) const { flag(data.*f); }
    void operator()(StickyFlag f) const { flag(data.*f.field); }
    void operator()(InvertedFlag f) const { flag(!(data.*f.field)); }

    void flag(bool set) const { stream << (set ? 1 : 0); }
};

} // namespace

void writeScenery(QTextStream &stream, const SceneryData &data,
                  const QList<Waypoint> &waypoints,
                  const QList<ControlPoint> &controlPoints)
{
    stream << "[Param]" << Qt::endl;
    for (const SceneryKey &key : sceneryKeys()) {
        stream << key.name << '=';
        std::visit(ValueWriter{stream, data}, key.field);
        stream << Qt::endl;
    }
    for (int i = 0; i < waypoints.size(); ++i)
        waypoints[i].write(stream, i);
    for (int i = 0; i < controlPoints.size(); ++i)
        controlPoints[i].write(stream, i);
}
