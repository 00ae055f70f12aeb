#include "scene/framename.h"

#include <QStringView>

#include <algorithm>
#include <limits>
#include <optional>

namespace {

struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeros = false;
    qint64 width = 0;
    qint64 precision = -1; // -1: none given
    char16_t type = 0;
    qsizetype length = 0; // characters of the conversion, percent sign included
};

bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

bool setFlag(Conversion &c, char16_t flag)
{
    switch (flag) {
    case u'-':
        c.left = true;
        return true;
    case u'+':
        c.plus = true;
        return true;
    case u' ':
        c.blank = true;
        return true;
    case u'#':
        c.alternate = true;
        return true;
    case u'0':
        c.zeros = true;
        return true;
    default:
        return false;
    }
}

// Reads digits from `at` on. False for a number that no int holds.
bool readNumber(QStringView text, qsizetype &at, qint64 &value)
{
    value = 0;
    for (; at < text.size() && isDigit(text[at].unicode()); ++at) {
        value = value * 10 + (text[at].unicode() - u'0');
        if (value >= std::numeric_limits<int>::max())
            return false;
    }
    return true;
}

// The conversion that `text` begins with; its first character is a percent sign.
std::optional<Conversion> conversionAt(QStringView text)
{
    Conversion c;
    qsizetype at = 1;
    while (at < text.size() && setFlag(c, text[at].unicode()))
        ++at;
    if (!readNumber(text, at, c.width))
        return {};
    if (at < text.size() && text[at] == u'.') {
        ++at;
        if (!readNumber(text, at, c.precision))
            return {};
    }
    if (at >= text.size() || !QStringView(u"diuoxXc").contains(text[at]))
        return {};
    c.type = text[at].unicode();
    c.length = at + 1;
    return c;
}

bool isSigned(const Conversion &c) { return c.type == u'd' || c.type == u'i'; }

// Digits without sign and padding.
QString digitsOf(const Conversion &c, int number)
{
    if (number == 0 && c.precision == 0)
        return {};
    if (isSigned(c))
        return QString::number(number < 0 ? -qint64(number) : qint64(number));
    const auto bits = static_cast<quint32>(number);
    if (c.type == u'o')
        return QString::number(bits, 8);
    if (c.type == u'x' || c.type == u'X') {
        const QString digits = QString::number(bits, 16);
        return c.type == u'X' ? digits.toUpper() : digits;
    }
    return QString::number(bits);
}

// What stands in front of the digits and of zeros that fill the width.
QString prefixOf(const Conversion &c, int number)
{
    if (isSigned(c)) {
        if (number < 0)
            return QStringLiteral("-");
        return c.plus ? QStringLiteral("+") : c.blank ? QStringLiteral(" ") : QString();
    }
    if (c.alternate && number != 0 && (c.type == u'x' || c.type == u'X'))
        return c.type == u'x' ? QStringLiteral("0x") : QStringLiteral("0X");
    return {};
}

QString run(qint64 count, QChar c)
{
    return QString(std::clamp<qint64>(count, 0, MaxFrameName), c);
}

// No part grows beyond the longest name, so that a huge width costs no memory.
QString convert(const Conversion &c, int number)
{
    if (c.type == u'c') {
        const QString text(QChar(static_cast<uchar>(number)));
        const QString padding = run(c.width - 1, u' ');
        return c.left ? text + padding : padding + text;
    }
    QString digits = digitsOf(c, number);
    qint64 zeros = std::max<qint64>(c.precision - digits.size(), 0);
    if (c.alternate && c.type == u'o' && zeros == 0 && !digits.startsWith(u'0'))
        zeros = 1;
    const QString prefix = prefixOf(c, number);
    const qint64 rest = c.width - prefix.size() - zeros - digits.size();
    if (c.zeros && !c.left && c.precision < 0)
        return prefix + run(zeros + std::max<qint64>(rest, 0), u'0') + digits;
    const QString body = prefix + run(zeros, u'0') + digits;
    return c.left ? body + run(rest, u' ') : run(rest, u' ') + body;
}

} // namespace

QString formatFrameName(const QString &nameTemplate, int number)
{
    const QStringView text(nameTemplate);
    QString name;
    bool converted = false;
    for (qsizetype at = 0; at < text.size() && name.size() < MaxFrameName;) {
        if (text[at] == u'%' && text.mid(at + 1).startsWith(u'%')) {
            name += u'%';
            at += 2;
            continue;
        }
        const auto conversion = text[at] == u'%' && !converted
                                    ? conversionAt(text.mid(at))
                                    : std::optional<Conversion>();
        if (!conversion) {
            name += text[at++];
            continue;
        }
        name += convert(*conversion, number);
        at += conversion->length;
        converted = true;
    }
    name.truncate(MaxFrameName);
    const qsizetype end = name.indexOf(QChar(0));
    if (end >= 0)
        name.truncate(end);
    return name;
}

bool hasFrameNumber(const QString &nameTemplate)
{
    return formatFrameName(nameTemplate, 0) != formatFrameName(nameTemplate, 9999);
}
