#include "scene/scenerywriter.h"

#include "scene/extrassection.h"
#include "scene/keyvalue.h"
#include "scene/scenerydocument.h"
#include "scene/scenerykeys.h"

#include <QTextStream>

namespace {

struct ValueWriter {
    QTextStream &stream;
    const SceneryData &data;

    void operator()(keykind::Real f) const { stream << data.*f.field; }
    void operator()(keykind::Whole f) const { stream << data.*f.field; }
    void operator()(keykind::Text f) const { stream << data.*f.field; }
    void operator()(keykind::Colour f) const { stream << colourText(data.*f.field); }
    void operator()(keykind::Flag f) const { flag(data.*f.field); }
    void operator()(keykind::StickyFlag f) const { flag(data.*f.field); }
    void operator()(keykind::InvertedFlag f) const { flag(!(data.*f.field)); }

    void flag(bool set) const { stream << (set ? 1 : 0); }
};

} // namespace

void writeScenery(QTextStream &stream, const SceneryDocument &document)
{
    stream << "[Param]" << Qt::endl;
    for (const SceneryKey &key : sceneryKeys()) {
        stream << key.name << '=';
        std::visit(ValueWriter{stream, document.parameters}, key.field);
        stream << Qt::endl;
    }
    for (int i = 0; i < document.waypoints.size(); ++i)
        document.waypoints[i].write(stream, i);
    for (int i = 0; i < document.controlPoints.size(); ++i)
        document.controlPoints[i].write(stream, i);
    writeExtras(stream, document.extras);
}
