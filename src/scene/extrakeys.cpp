#include "scene/extrakeys.h"

#include "scene/strictnumber.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace {

using extrakind::Least, extrakind::Most;
using extrakind::LeastSeed, extrakind::MostSeed;

constexpr std::array Keys{
#define EXTRA(kind, name, value, ...)                                                    \
    ExtraKey{QLatin1String(#name),                                                       \
             extrakind::kind{&SceneryExtras::name __VA_OPT__(, ) __VA_ARGS__}},
    SCENERY_EXTRAS(EXTRA)
#undef EXTRA
};

constexpr QRgb Opaque = 0xFF000000u;

QString tr(const char *source)
{
    return QCoreApplication::translate("SceneryDelegate", source);
}

// --- Reading -----------------------------------------------------------------------

// Puts a number into its field, within the limits of its kind.
template <class Kind, class Field>
ExtraMatch hold(const Kind &kind, std::optional<double> number, Field &field)
{
    using Number = decltype(kind.lowest);
    if (!number)
        return ExtraMatch::Broken;
    const double held = std::clamp<double>(*number, kind.lowest, kind.highest);
    field = static_cast<Number>(held);
    return held == *number ? ExtraMatch::Read : ExtraMatch::Limited;
}

template <class Field> ExtraMatch put(std::optional<quint32> digits, Field &field)
{
    if (!digits)
        return ExtraMatch::Broken;
    field = *digits | Opaque;
    return ExtraMatch::Read;
}

bool isZonedTime(QStringView text)
{
    const QDateTime time = QDateTime::fromString(text.toString(), Qt::ISODate);
    return time.isValid() && time.timeSpec() != Qt::LocalTime && !text.contains(u',');
}

struct ValueReader {
    SceneryExtras &extras;
    QStringView text; // without blanks around it

    ExtraMatch operator()(extrakind::Flag f) const
    {
        return hold(extrakind::Whole{nullptr, 0, 1}, strictWhole(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::Whole f) const
    {
        return hold(f, strictWhole(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::Real f) const
    {
        return hold(f, strictReal(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::OptionalReal f) const
    {
        return text.isEmpty() ? cleared(f) : hold(f, strictReal(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::Colour f) const
    {
        return put(strictColour(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::OptionalColour f) const
    {
        return text.isEmpty() ? cleared(f) : put(strictColour(text), extras.*f.field);
    }
    ExtraMatch operator()(extrakind::Time f) const
    {
        if (!text.isEmpty() && !isZonedTime(text))
            return ExtraMatch::Broken;
        extras.*f.field = text.toString();
        return ExtraMatch::Read;
    }
    template <class Enum, const auto &Words>
    ExtraMatch operator()(extrakind::Choice<Enum, Words> f) const
    {
        const auto word = std::find(f.words.begin(), f.words.end(), text);
        if (word == f.words.end())
            return ExtraMatch::Broken;
        extras.*f.field = static_cast<Enum>(word - f.words.begin());
        return ExtraMatch::Read;
    }

    template <class Kind> ExtraMatch cleared(Kind f) const
    {
        extras.*f.field = {};
        return ExtraMatch::Read;
    }
};

// --- Writing -----------------------------------------------------------------------

QString numberText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString coloursDigits(QRgb colour)
{
    return QStringLiteral("%1").arg(colour & ~Opaque, 6, 16, QLatin1Char('0'));
}

struct ValueText {
    const SceneryExtras &extras;

    QString operator()(extrakind::Flag f) const
    {
        return extras.*f.field ? QStringLiteral("1") : QStringLiteral("0");
    }
    QString operator()(extrakind::Whole f) const
    {
        return QString::number(extras.*f.field);
    }
    QString operator()(extrakind::Real f) const { return numberText(extras.*f.field); }
    QString operator()(extrakind::OptionalReal f) const
    {
        const std::optional<double> &number = extras.*f.field;
        return number ? numberText(*number) : QString();
    }
    QString operator()(extrakind::Colour f) const
    {
        return coloursDigits(extras.*f.field);
    }
    QString operator()(extrakind::OptionalColour f) const
    {
        const std::optional<QRgb> &colour = extras.*f.field;
        return colour ? coloursDigits(*colour) : QString();
    }
    QString operator()(extrakind::Time f) const { return extras.*f.field; }
    template <class Enum, const auto &Words>
    QString operator()(extrakind::Choice<Enum, Words> f) const
    {
        return f.words[static_cast<std::size_t>(extras.*f.field)];
    }
};

// --- Telling -----------------------------------------------------------------------

template <class Kind> QString rangeText(const QString &kind, const Kind &limits)
{
    return kind.arg(numberText(limits.lowest), numberText(limits.highest));
}

struct Allowed {
    QString operator()(extrakind::Flag) const { return tr("0 or 1"); }
    QString operator()(extrakind::Whole f) const
    {
        return rangeText(tr("a whole number from %1 to %2"), f);
    }
    QString operator()(extrakind::Real f) const
    {
        return rangeText(tr("a number from %1 to %2"), f);
    }
    QString operator()(extrakind::OptionalReal f) const
    {
        return rangeText(tr("a number from %1 to %2, or nothing"), f);
    }
    QString operator()(extrakind::Colour) const { return tr("a colour as rrggbb"); }
    QString operator()(extrakind::OptionalColour) const
    {
        return tr("a colour as rrggbb, or nothing");
    }
    QString operator()(extrakind::Time) const
    {
        return tr("date and time with a zone, such as 2026-06-21T12:00:00+02:00, or "
                  "nothing");
    }
    template <class Enum, const auto &Words>
    QString operator()(extrakind::Choice<Enum, Words> f) const
    {
        QStringList words;
        for (const QLatin1String word : f.words)
            words.append(word);
        return tr("one of %1").arg(words.join(QStringLiteral(", ")));
    }
};

} // namespace

std::span<const ExtraKey> extraKeys() { return Keys; }

const ExtraKey *findExtra(QStringView name)
{
    const auto found =
        std::find_if(Keys.begin(), Keys.end(),
                     [name](const ExtraKey &key) { return key.name == name; });
    return found == Keys.end() ? nullptr : &*found;
}

ExtraMatch readExtra(SceneryExtras &extras, const ExtraKey &key, QStringView text)
{
    return std::visit(ValueReader{extras, text.trimmed()}, key.field);
}

QString extraText(const SceneryExtras &extras, const ExtraKey &key)
{
    return std::visit(ValueText{extras}, key.field);
}

bool isDefault(const SceneryExtras &extras, const ExtraKey &key)
{
    static const SceneryExtras standard;
    return std::visit([&extras](auto f) { return extras.*f.field == standard.*f.field; },
                      key.field);
}

QString allowedText(const ExtraKey &key) { return std::visit(Allowed{}, key.field); }
