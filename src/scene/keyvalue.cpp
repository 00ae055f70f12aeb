#include "scene/keyvalue.h"

KeyMatch matchKey(QStringView line, QStringView key, QStringView *value, QString *error)
{
    if (!line.startsWith(key))
        return KeyMatch::Other;
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0) {
        *error = QStringLiteral("No key/value pair: ") + line.toString();
        return KeyMatch::Broken;
    }
    if (equals != key.size())
        return KeyMatch::Other; // a longer key
    *value = line.mid(equals + 1);
    return KeyMatch::Read;
}

void compactKey(QString &line)
{
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        return;
    const QStringView key = QStringView(line).left(equals);
    if (!key.contains(u' ') && !key.contains(u'\t'))
        return;
    QString compact;
    compact.reserve(line.size());
    for (const QChar c : key)
        if (c != u' ' && c != u'\t')
            compact += c;
    compact += QStringView(line).mid(equals);
    line = compact;
}

bool readColour(QStringView value, QRgb *colour, QString *error)
{
    bool ok = false;
    const quint32 v = value.toUInt(&ok, 16);
    if (!ok) {
        *error = QStringLiteral("No color value: ") + value.toString();
        return false;
    }
    *colour = 0xFF000000u | (v & 0xFFu) << 16 | (v & 0xFF00u) | (v & 0xFF0000u) >> 16;
    return true;
}

QString colourText(QRgb colour)
{
    return QStringLiteral("%1%2%3")
        .arg(qBlue(colour), 2, 16, QLatin1Char('0'))
        .arg(qGreen(colour), 2, 16, QLatin1Char('0'))
        .arg(qRed(colour), 2, 16, QLatin1Char('0'));
}

bool readPair(QStringView line, QStringView value, std::array<qint32, 2> *numbers,
              QString *error)
{
    const qsizetype comma = value.indexOf(u',');
    if (comma < 0) {
        *error = QStringLiteral("No comma in two value parameter: ") + line.toString();
        return false;
    }
    *numbers = {wholeOf(value.left(comma)), wholeOf(value.mid(comma + 1))};
    return true;
}

bool readTriple(QStringView line, QStringView value, std::array<qint32, 3> *numbers,
                QString *error)
{
    const qsizetype first = value.indexOf(u',');
    if (first < 0) {
        *error =
            QStringLiteral("No first comma in three value parameter: ") + line.toString();
        return false;
    }
    const qsizetype second = value.indexOf(u',', first + 1);
    if (second < 0) {
        *error = QStringLiteral("No second comma in three value parameter: ") +
                 line.toString();
        return false;
    }
    *numbers = {wholeOf(value.left(first)),
                wholeOf(value.mid(first + 1, second - first - 1)),
                wholeOf(value.mid(second + 1))};
    return true;
}
