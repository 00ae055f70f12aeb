#include "scene/sceneryreader.h"

#include "scene/keyvalue.h"
#include "scene/scenerydocument.h"
#include "scene/scenerykeys.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr QLatin1String ObsoleteKey("AusgabeYUV");
constexpr QLatin1String WaypointPrefix("Punkt");
constexpr QLatin1String ControlPointPrefix("cPunkt");

template <class... F> struct Overloaded : F... {
    using F::operator()...;
};
template <class... F> Overloaded(F...) -> Overloaded<F...>;

const SceneryKey *findKey(QStringView name)
{
    static const QHash<QString, const SceneryKey *> names = [] {
        QHash<QString, const SceneryKey *> all;
        for (const SceneryKey &key : sceneryKeys())
            all.insert(key.name, &key);
        return all;
    }();
    // Views of the names above, so that a look-up makes no string.
    static const QHash<QStringView, const SceneryKey *> views = [] {
        QHash<QStringView, const SceneryKey *> all;
        for (auto it = names.cbegin(); it != names.cend(); ++it)
            all.insert(QStringView(it.key()), it.value());
        return all;
    }();
    return views.value(name, nullptr);
}

// A line without `=` is broken if it begins with any scalar key.
bool beginsWithKey(QStringView line)
{
    const std::span<const SceneryKey> keys = sceneryKeys();
    return line.startsWith(ObsoleteKey) ||
           std::any_of(keys.begin(), keys.end(), [line](const SceneryKey &key) {
               return line.startsWith(key.name);
           });
}

// The part of a list line behind its key, and the index that the key names. No
// value if the line is no such key.
struct ListLine {
    int index;
    QStringView key;
};

std::optional<ListLine> listLine(QStringView line, QLatin1String prefix)
{
    if (!line.startsWith(prefix))
        return {};
    qsizetype end = line.indexOf(u'_');
    if (end < 0)
        end = line.indexOf(u'=');
    const qsizetype from = prefix.size();
    const QStringView digits = end < 0 ? line.mid(from) : line.mid(from, end - from);
    const int index = digits.toInt();
    if (index < 0 || index > MaxListIndex)
        return {};
    // The key as it is written, with at least two digits, must open the line.
    const int length = index < 100 ? 2 : index < 1000 ? 3 : index < 10000 ? 4 : 5;
    int rest = index;
    if (line.size() < from + length)
        return {};
    for (qsizetype at = from + length - 1; at >= from; --at, rest /= 10)
        if (line[at].unicode() != u'0' + rest % 10)
            return {};
    return ListLine{index, line.left(from + length)};
}

template <class Record> Record &recordAt(QList<Record> &list, int index)
{
    if (list.size() <= index)
        list.resize(index + 1);
    return list[index];
}

} // namespace

SceneryReader::LineResult SceneryReader::readLine(QStringView line, QString *error)
{
    if (line.startsWith(QLatin1String("[Param]"))) {
        m_headSeen = true;
        return LineResult::Accepted;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0 && beginsWithKey(line)) {
        *error = QStringLiteral("No key/value pair: ") + line.toString();
        return LineResult::Rejected;
    }
    if (equals >= 0 && line.left(equals) == ObsoleteKey) {
        const bool selected = flagOf(line.mid(equals + 1));
        if (selected)
            m_document.parameters.AusgabePNG = true;
        return selected ? LineResult::ObsoleteFormatOn : LineResult::ObsoleteFormatOff;
    }
    // A key that stands before an `=` fits one rule at most, so the order is free.
    bool known = false;
    bool good = false;
    if (equals >= 0)
        good = readScalar(line.left(equals), line.mid(equals + 1), error, &known);
    if (!known)
        good = readWaypoint(line, error, &known);
    if (!known)
        good = readControlPoint(line, error, &known);
    if (!known)
        *error = QStringLiteral("No such key: ") + line.toString();
    return known && good ? LineResult::Accepted : LineResult::Rejected;
}

bool SceneryReader::readScalar(QStringView key, QStringView value, QString *error,
                               bool *known)
{
    const SceneryKey *const found = findKey(key);
    *known = found != nullptr;
    if (!found)
        return false;
    SceneryData &d = m_document.parameters;
    return std::visit(
        Overloaded{
            [&](keykind::Real f) { return (d.*f.field = realOf(value)), true; },
            [&](keykind::Whole f) { return (d.*f.field = wholeOf(value)), true; },
            [&](keykind::Flag f) { return (d.*f.field = flagOf(value)), true; },
            [&](keykind::Text f) { return (d.*f.field = value.toString()), true; },
            [&](keykind::Colour f) { return readColour(value, &(d.*f.field), error); },
            [&](keykind::StickyFlag f) { return (d.*f.field |= flagOf(value)), true; },
            [&](keykind::InvertedFlag f) { return (d.*f.field = !flagOf(value)), true; },
        },
        found->field);
}

bool SceneryReader::readWaypoint(QStringView line, QString *error, bool *known)
{
    const auto at = listLine(line, WaypointPrefix);
    if (!at)
        return false;
    QStringView value;
    const KeyMatch plain = matchKey(line, at->key, &value, error);
    if (plain != KeyMatch::Other) {
        *known = true;
        std::array<qint32, 2> xy{};
        if (plain == KeyMatch::Broken || !readPair(line, value, &xy, error))
            return false;
        Waypoint &waypoint = recordAt(m_document.waypoints, at->index);
        waypoint.x = xy[0];
        waypoint.y = xy[1];
        return true;
    }
    const QStringView rest = line.mid(at->key.size());
    if (rest.size() < 3 || rest[0] != u'_' || rest[2] != u'=' ||
        !QStringView(u"ziap").contains(rest[1]))
        return false;
    *known = true;
    value = rest.mid(3);
    Waypoint &waypoint = recordAt(m_document.waypoints, at->index);
    if (rest[1] == u'z')
        waypoint.z = wholeOf(value);
    else
        (rest[1] == u'i'   ? waypoint.i
         : rest[1] == u'a' ? waypoint.a
                           : waypoint.p) = realOf(value);
    return true;
}

bool SceneryReader::readControlPoint(QStringView line, QString *error, bool *known)
{
    const auto at = listLine(line, ControlPointPrefix);
    if (!at)
        return false;
    QStringView value;
    const KeyMatch match = matchKey(line, at->key, &value, error);
    *known = match != KeyMatch::Other;
    std::array<qint32, 3> xyz{};
    if (match != KeyMatch::Read || !readTriple(line, value, &xyz, error))
        return false;
    ControlPoint &point = recordAt(m_document.controlPoints, at->index);
    point.x = xyz[0];
    point.y = xyz[1];
    point.z = xyz[2];
    return true;
}
