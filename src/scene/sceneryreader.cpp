#include "scene/sceneryreader.h"

#include "scene/keyvalue.h"
#include "scene/scenerydocument.h"
#include "scene/scenerykeys.h"

#include <QHash>

#include <algorithm>
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

Result<SceneryReader::Line> SceneryReader::readLine(QStringView line)
{
    if (line.startsWith(QLatin1String("[Param]"))) {
        m_headSeen = true;
        return Line::Plain;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0 && beginsWithKey(line))
        return failed(QStringLiteral("No key/value pair: ") + line.toString());
    if (equals >= 0 && line.left(equals) == ObsoleteKey) {
        const bool selected = flagOf(line.mid(equals + 1));
        if (selected)
            m_document.parameters.AusgabePNG = true;
        return selected ? Line::ObsoleteFormatOn : Line::ObsoleteFormatOff;
    }
    // A key that stands before an `=` fits one rule at most, so the order is free.
    for (const auto read : {&SceneryReader::readScalar, &SceneryReader::readWaypoint,
                            &SceneryReader::readControlPoint}) {
        const Result<bool> known = (this->*read)(line);
        if (!known)
            return failed(known.error().text);
        if (*known)
            return Line::Plain;
    }
    return failed(QStringLiteral("No such key: ") + line.toString());
}

Result<bool> SceneryReader::readScalar(QStringView line)
{
    const qsizetype equals = line.indexOf(u'=');
    const SceneryKey *const found = equals < 0 ? nullptr : findKey(line.left(equals));
    if (!found)
        return false;
    const QStringView value = line.mid(equals + 1);
    if (const auto *const colour = std::get_if<keykind::Colour>(&found->field)) {
        const Result<QRgb> read = readColour(value);
        if (!read)
            return failed(read.error().text);
        m_document.parameters.*(colour->field) = *read;
        return true;
    }
    SceneryData &d = m_document.parameters;
    std::visit(Overloaded{
                   [&](keykind::Real f) { d.*f.field = realOf(value); },
                   [&](keykind::Whole f) { d.*f.field = wholeOf(value); },
                   [&](keykind::Flag f) { d.*f.field = flagOf(value); },
                   [&](keykind::Text f) { d.*f.field = value.toString(); },
                   [&](keykind::Colour) {}, // above: it alone may be no value
                   [&](keykind::StickyFlag f) { d.*f.field |= flagOf(value); },
                   [&](keykind::InvertedFlag f) { d.*f.field = !flagOf(value); },
               },
               found->field);
    return true;
}

Result<bool> SceneryReader::readWaypoint(QStringView line)
{
    const auto at = listLine(line, WaypointPrefix);
    if (!at)
        return false;
    const auto plain = valueUnderKey(line, at->key);
    if (!plain)
        return failed(plain.error().text);
    if (*plain) {
        const auto xy = readPair(line, **plain);
        if (!xy)
            return failed(xy.error().text);
        Waypoint &waypoint = recordAt(m_document.waypoints, at->index);
        waypoint.x = (*xy)[0];
        waypoint.y = (*xy)[1];
        return true;
    }
    const QStringView rest = line.mid(at->key.size());
    if (rest.size() < 3 || rest[0] != u'_' || rest[2] != u'=' ||
        !QStringView(u"ziap").contains(rest[1]))
        return false;
    const QStringView value = rest.mid(3);
    Waypoint &waypoint = recordAt(m_document.waypoints, at->index);
    if (rest[1] == u'z')
        waypoint.z = wholeOf(value);
    else
        (rest[1] == u'i'   ? waypoint.i
         : rest[1] == u'a' ? waypoint.a
                           : waypoint.p) = realOf(value);
    return true;
}

Result<bool> SceneryReader::readControlPoint(QStringView line)
{
    const auto at = listLine(line, ControlPointPrefix);
    if (!at)
        return false;
    const auto value = valueUnderKey(line, at->key);
    if (!value)
        return failed(value.error().text);
    if (!*value)
        return false;
    const auto xyz = readTriple(line, **value);
    if (!xyz)
        return failed(xyz.error().text);
    ControlPoint &point = recordAt(m_document.controlPoints, at->index);
    point.x = (*xyz)[0];
    point.y = (*xyz)[1];
    point.z = (*xyz)[2];
    return true;
}
