#include "commands/option.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

bool isWithin(const Option &option, double value)
{
    return value >= option.lowest && value <= option.highest;
}

bool isInteger(const Option &option, const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A[+-]?[0-9]{1,15}\\z"));
    return form.match(text).hasMatch() && isWithin(option, text.toDouble());
}

// Decimals count as they are written, an exponent included: 1.250e1 has two.
bool isReal(const Option &option, const QString &text)
{
    static const QRegularExpression form(QStringLiteral(
        "\\A[+-]?(?:[0-9]+(?:\\.([0-9]*))?|\\.([0-9]+))(?:[eE]([+-]?[0-9]{1,3}))?\\z"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return false;
    const qsizetype written = match.captured(1).size() + match.captured(2).size();
    const qsizetype decimals = written - match.captured(3).toInt();
    bool ok = false;
    const double value = text.toDouble(&ok); // not where it is too large for a double
    return ok && isWithin(option, value) &&
           (option.decimals == Option::AnyDecimals || decimals <= option.decimals);
}

bool isSize(const Option &option, const QString &text)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    return sides.size() == 2 &&
           std::all_of(sides.begin(), sides.end(), [&option](const QString &side) {
               return !side.isEmpty() && side.at(0).isDigit() && isInteger(option, side);
           });
}

using Judge = bool (*)(const Option &, const QString &);

bool areNumbers(const Option &option, const QString &text, Judge isNumber)
{
    const QStringList parts = text.split(QLatin1Char(','));
    return parts.size() == option.numbers &&
           std::all_of(parts.begin(), parts.end(),
                       [&](const QString &part) { return isNumber(option, part); });
}

bool isTaken(const Option &option, const QString &value)
{
    switch (option.kind) {
    case OptionKind::Integer:
        return areNumbers(option, value, isInteger);
    case OptionKind::Real:
        return areNumbers(option, value, isReal);
    case OptionKind::Size:
        return isSize(option, value);
    case OptionKind::Choice:
        return option.choices.contains(value);
    default:
        return !value.isEmpty();
    }
}

QString numberText(double value) { return QString::number(value, 'g', 12); }

QString rangeOf(const Option &option)
{
    const bool below = option.highest < Option::NoLimit;
    if (option.lowest > -Option::NoLimit)
        return below ? QStringLiteral(" from %1 to %2")
                           .arg(numberText(option.lowest), numberText(option.highest))
                     : QStringLiteral(" of at least %1").arg(numberText(option.lowest));
    return below ? QStringLiteral(" of at most %1").arg(numberText(option.highest))
                 : QString();
}

QString decimalsOf(const Option &option)
{
    return option.decimals == Option::AnyDecimals
               ? QString()
               : QStringLiteral(" with at most %1 decimals").arg(option.decimals);
}

// A range stands apart from what is said of several numbers.
QString afterNumbers(const QString &range, bool one)
{
    return one || range.isEmpty() ? range : QLatin1Char(',') + range;
}

} // namespace

QString takenBy(const Option &option)
{
    const bool one = option.numbers == 1;
    const QString count = one ? QStringLiteral("a") : QString::number(option.numbers);
    const QString kind =
        option.kind == OptionKind::Integer ? QStringLiteral(" whole") : QString();
    const QString plural = one ? QString() : QStringLiteral("s, with commas between");
    switch (option.kind) {
    case OptionKind::Flag:
        return QStringLiteral("no value");
    case OptionKind::Integer:
    case OptionKind::Real:
        return QStringLiteral("%1%2 number%3%4")
            .arg(count, kind, plural,
                 afterNumbers(rangeOf(option) + decimalsOf(option), one));
    case OptionKind::Size:
        return QStringLiteral("WxH with sides%1").arg(rangeOf(option));
    case OptionKind::Choice:
        return QStringLiteral("one of %1").arg(option.choices.join(QStringLiteral(", ")));
    case OptionKind::Text:
        return QStringLiteral("a text");
    default:
        return QStringLiteral("the name of a file");
    }
}

QString complaintOf(const Option &option, const QString &value)
{
    if (isTaken(option, value))
        return {};
    return QStringLiteral("--%1 takes %2, not \"%3\".")
        .arg(option.name, takenBy(option), value);
}
