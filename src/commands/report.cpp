#include "commands/report.h"

#include <QJsonDocument>
#include <QLocale>
#include <QStringList>

#include <cmath>

namespace {

QString textOf(const QJsonValue &value);

// As short as it can be without a loss, and whole numbers without an exponent.
QString numberText(double value)
{
    constexpr double MostDigits = 1e15;
    if (std::trunc(value) == value && std::abs(value) < MostDigits)
        return QString::number(value, 'f', 0);
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString listOf(const QJsonArray &values)
{
    QStringList texts;
    for (const auto &value : values)
        texts << textOf(value);
    return texts.join(QStringLiteral(", "));
}

QString membersOf(const QJsonObject &object)
{
    QStringList texts;
    for (auto each = object.begin(); each != object.end(); ++each)
        texts << QStringLiteral("%1 %2").arg(each.key(), textOf(each.value()));
    return texts.join(QStringLiteral(", "));
}

QString textOf(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    case QJsonValue::Double:
        return numberText(value.toDouble());
    case QJsonValue::Array:
        return listOf(value.toArray());
    case QJsonValue::Object:
        return membersOf(value.toObject());
    default:
        return value.toString();
    }
}

} // namespace

QString Report::asText() const
{
    QString text;
    for (const auto &[key, value] : m_entries)
        if (!value.isNull() && !value.isUndefined())
            text += QStringLiteral("%1: %2\n").arg(key, textOf(value));
    return text;
}

QJsonObject Report::asObject() const
{
    QJsonObject object;
    for (const auto &[key, value] : m_entries)
        object.insert(key, value);
    return object;
}

QString Report::asJson() const
{
    return QString::fromUtf8(QJsonDocument(asObject()).toJson(QJsonDocument::Compact)) +
           QLatin1Char('\n');
}
