#include "views/decimalspinbox.h"

#include <QLocale>

#include <algorithm>

namespace {

bool isSign(QChar c, const QString &ownSign)
{
    return c == QLatin1Char('.') || c == QLatin1Char(',') || ownSign == c;
}

bool isApostrophe(QChar c)
{
    constexpr char16_t Typographic = 0x2019; // Swiss groups of digits
    return c == QLatin1Char('\'') || c == QChar(Typographic);
}

// Takes the blanks off both ends, as they come along with a copied number.
void trim(QString &number, int &position)
{
    const auto isBlank = [](QChar c) { return c.isSpace(); };
    const auto first = std::find_if_not(number.cbegin(), number.cend(), isBlank);
    const int leading = static_cast<int>(first - number.cbegin());
    number = number.trimmed();
    position = std::clamp(position - leading, 0, static_cast<int>(number.size()));
}

// One sign, the locale's, and nothing else between the digits; false if that is not to
// be had.
bool unify(QString &number, int position, const QLocale &locale)
{
    const QString ownSign = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    qsizetype sign = -1;
    for (qsizetype i = 0; i < number.size(); ++i) {
        const QChar c = number[i];
        if (isSign(c, ownSign)) {
            // A sign typed in front of the one that is there steps over it.
            const bool steps = sign >= 0 && i == sign + 1 && i == position;
            if (sign >= 0 && !steps)
                return false;
            sign = steps ? sign : i;
        } else if (c.isSpace() || isApostrophe(c) || group == c) {
            return false;
        }
    }
    if (sign < 0)
        return true;
    if (sign + 1 < number.size() && isSign(number[sign + 1], ownSign))
        number.remove(sign + 1, 1);
    number.replace(sign, 1, ownSign);
    return true;
}

} // namespace

DecimalSpinBox::DecimalSpinBox(QWidget *parent) : QDoubleSpinBox(parent) {}

bool DecimalSpinBox::toOwnLocale(QString &text, int &position) const
{
    const auto before = text.startsWith(prefix()) ? prefix().size() : 0;
    const auto after =
        text.size() > before && text.endsWith(suffix()) ? suffix().size() : 0;
    QString number = text.mid(before, text.size() - before - after);
    int place = std::max(position - static_cast<int>(before), 0);
    trim(number, place);
    if (!unify(number, place, locale()))
        return false;
    text = text.left(before) + number + text.right(after);
    position = place + static_cast<int>(before);
    return true;
}

QValidator::State DecimalSpinBox::validate(QString &text, int &position) const
{
    if (!toOwnLocale(text, position))
        return QValidator::Invalid;
    return QDoubleSpinBox::validate(text, position);
}

double DecimalSpinBox::valueFromText(const QString &text) const
{
    QString own = text;
    int position = static_cast<int>(own.size());
    return QDoubleSpinBox::valueFromText(toOwnLocale(own, position) ? own : text);
}

void DecimalSpinBox::fixup(QString &) const {}
