#include "scene/keyvalue.h"

Result<std::optional<QStringView>> valueUnderKey(QStringView line, QStringView key)
{
    if (!line.startsWith(key))
        return std::nullopt;
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        return failed(QStringLiteral("No key/value pair: ") + line.toString());
    if (equals != key.size())
        return std::nullopt; // a longer key
    return line.mid(equals + 1);
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

Result<QRgb> readColour(QStringView value)
{
    bool ok = false;
    const quint32 v = value.toUInt(&ok, 16);
    if (!ok)
        return failed(QStringLiteral("No color value: ") + value.toString());
    return 0xFF000000u | (v & 0xFFu) << 16 | (v & 0xFF00u) | (v & 0xFF0000u) >> 16;
}

QString colourText(QRgb colour)
{
    return QStringLiteral("%1%2%3")
        .arg(qBlue(colour), 2, 16, QLatin1Char('0'))
        .arg(qGreen(colour), 2, 16, QLatin1Char('0'))
        .arg(qRed(colour), 2, 16, QLatin1Char('0'));
}

Result<std::array<qint32, 2>> readPair(QStringView line, QStringView value)
{
    const qsizetype comma = value.indexOf(u',');
    if (comma < 0)
        return failed(QStringLiteral("No comma in two value parameter: ") +
                      line.toString());
    return std::array{wholeOf(value.left(comma)), wholeOf(value.mid(comma + 1))};
}

Result<std::array<qint32, 3>> readTriple(QStringView line, QStringView value)
{
    const qsizetype first = value.indexOf(u',');
    if (first < 0)
        return failed(QStringLiteral("No first comma in three value parameter: ") +
                      line.toString());
    const qsizetype second = value.indexOf(u',', first + 1);
    if (second < 0)
        return failed(QStringLiteral("No second comma in three value parameter: ") +
                      line.toString());
    return std::array{wholeOf(value.left(first)),
                      wholeOf(value.mid(first + 1, second - first - 1)),
                      wholeOf(value.mid(second + 1))};
}
