#include "scene/scenerysetting.h"

#include "scene/extrakeys.h"
#include "scene/fieldlimits.h"
#include "scene/quotedline.h"
#include "scene/scenerydocument.h"
#include "scene/scenerykeys.h"
#include "scene/sceneryreader.h"
#include "scene/strictnumber.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace {

constexpr int BestQuality = 2;

QString tr(const char *source)
{
    return QCoreApplication::translate("SceneryDelegate", source);
}

auto refused(const ScenerySetting &setting, const QString &allowed)
{
    return failed(tr("%1 takes %2, not \"%3\".")
                      .arg(setting.key, allowed, beginningOf(setting.value)));
}

// --- Told keys ---------------------------------------------------------------------

struct Range {
    double lowest;
    double highest;
};

// Of what the form shows no logarithm, its own range; of others what the type holds.
Range rangeOf(double SceneryData::*field)
{
    for (const RealLimits &limits : realLimits())
        if (limits.field == field)
            return {parameterValue(limits, limits.lowest),
                    parameterValue(limits, limits.highest)};
    return {std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max()};
}

Range rangeOf(qint32 SceneryData::*field)
{
    for (const WholeLimits &limits : wholeLimits())
        if (limits.field == field)
            return {double(limits.lowest), double(limits.highest)};
    return {0.0, double(BestQuality)}; // the one whole parameter without a spin box
}

QString numbersText(const QString &kind, const Range &range)
{
    return kind.arg(range.lowest).arg(range.highest);
}

// Sets a field; what it allows where the text is none of that.
class FieldSetter {
public:
    FieldSetter(SceneryData &data, const QString &text) : m_data(data), m_text(text) {}

    QString operator()(keykind::Real f) const
    {
        const Range range = rangeOf(f.field);
        return put(f.field, strictReal(m_text), range, [&range] {
            return range.highest == std::numeric_limits<double>::max()
                       ? tr("a number")
                       : numbersText(tr("a number from %1 to %2"), range);
        });
    }
    QString operator()(keykind::Whole f) const
    {
        const Range range = rangeOf(f.field);
        return put(f.field, strictWhole(m_text), range, [&range] {
            return numbersText(tr("a whole number from %1 to %2"), range);
        });
    }
    QString operator()(keykind::Flag f) const { return flag(f.field, true); }
    QString operator()(keykind::StickyFlag f) const { return flag(f.field, true); }
    QString operator()(keykind::InvertedFlag f) const { return flag(f.field, false); }
    QString operator()(keykind::Text f) const
    {
        if (m_text.size() > MaxFieldText)
            return tr("at most %1 characters").arg(MaxFieldText);
        // A file would hold the rest as lines of their own.
        if (m_text.contains(u'\n') || m_text.contains(u'\r'))
            return tr("one line of text");
        m_data.*f.field = m_text;
        return {};
    }
    QString operator()(keykind::Colour f) const
    {
        const std::optional<quint32> digits = strictColour(m_text);
        if (!digits)
            return tr("a colour as bbggrr");
        m_data.*f.field =
            0xFF000000u | (*digits & 0xFFu) << 16 | (*digits & 0xFF00u) | *digits >> 16;
        return {};
    }

private:
    template <class Number, class Allowed>
    [[nodiscard]] QString put(Number SceneryData::*field, std::optional<double> number,
                              const Range &range, const Allowed &allowed) const
    {
        if (!number || *number < range.lowest || *number > range.highest)
            return allowed();
        m_data.*field = static_cast<Number>(*number);
        return {};
    }

    // `set` is what the field holds where the key is 1.
    [[nodiscard]] QString flag(bool SceneryData::*field, bool set) const
    {
        if (m_text != QLatin1String("0") && m_text != QLatin1String("1"))
            return tr("0 or 1");
        m_data.*field = (m_text == QLatin1String("1")) == set;
        return {};
    }

    SceneryData &m_data;
    const QString &m_text;
};

Result<void> applyTold(SceneryData &data, const SceneryKey &key,
                       const ScenerySetting &setting)
{
    const QString allowed = std::visit(FieldSetter(data, setting.value), key.field);
    if (!allowed.isEmpty())
        return refused(setting, allowed);
    return {};
}

// --- Points ------------------------------------------------------------------------

const QRegularExpression &pointKey()
{
    static const QRegularExpression form(
        QStringLiteral("^(?:(c)Punkt(\\d{2,5})|Punkt(\\d{2,5})(?:_([ziap]))?)\\z"));
    return form;
}

bool areWholes(const QString &text, qsizetype count)
{
    const QStringList parts = text.split(u',');
    return parts.size() == count &&
           std::all_of(parts.begin(), parts.end(), [](const QString &part) {
               bool ok = false;
               part.toInt(&ok);
               return ok;
           });
}

Result<void> applyPoint(SceneryDocument &scenery, const ScenerySetting &setting,
                        const QRegularExpressionMatch &match)
{
    const bool control = !match.capturedView(1).isEmpty();
    const int index = match.capturedView(control ? 2 : 3).toInt();
    if (index >= (control ? scenery.controlPoints.size() : scenery.waypoints.size()))
        return failed(tr("%1: the scenery has no such point.").arg(setting.key));
    const QStringView part = match.capturedView(4);
    const qsizetype wholes = control ? 3 : part.isEmpty() ? 2 : part == u"z" ? 1 : 0;
    if (wholes > 0 ? !areWholes(setting.value, wholes) : !strictReal(setting.value))
        return refused(setting, wholes == 0   ? tr("a number")
                                : wholes == 1 ? tr("a whole number")
                                              : tr("%1 whole numbers").arg(wholes));
    const auto taken =
        SceneryReader(scenery).readLine(setting.key + u'=' + setting.value);
    if (!taken)
        return failed(taken.error().text);
    return {};
}

} // namespace

bool isPointKey(const QString &key) { return pointKey().match(key).hasMatch(); }

Result<ScenerySetting> settingOf(const QString &text)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 1)
        return failed(tr("\"%1\" is no KEY=VALUE.").arg(text));
    return ScenerySetting{text.left(equals), text.mid(equals + 1)};
}

Result<void> applySetting(SceneryDocument &scenery, const ScenerySetting &setting)
{
    const std::span<const SceneryKey> told = sceneryKeys();
    const auto key =
        std::find_if(told.begin(), told.end(), [&setting](const SceneryKey &each) {
            return each.name == setting.key;
        });
    if (key != told.end())
        return applyTold(scenery.parameters, *key, setting);
    if (const ExtraKey *const extra = findExtra(setting.key)) {
        SceneryExtras changed = scenery.extras;
        if (readExtra(changed, *extra, setting.value) != ExtraMatch::Read)
            return refused(setting, allowedText(*extra));
        scenery.extras = std::move(changed);
        return {};
    }
    const QRegularExpressionMatch match = pointKey().match(setting.key);
    if (!match.hasMatch())
        return failed(tr("There is no key %1.").arg(setting.key));
    return applyPoint(scenery, setting, match);
}
