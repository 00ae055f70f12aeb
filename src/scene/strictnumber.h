#pragma once

#include <QStringView>

#include <algorithm>
#include <cmath>
#include <optional>

// Texts of values of which nothing may be guessed. The locale plays no part.

/// A finite number with a point, no comma; an exponent is allowed.
[[nodiscard]] inline std::optional<double> strictReal(QStringView text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The same, if it has no fraction.
[[nodiscard]] inline std::optional<double> strictWhole(QStringView text)
{
    const std::optional<double> number = strictReal(text);
    return number && std::trunc(*number) == *number ? number : std::nullopt;
}

/// Six digits to the base of 16.
[[nodiscard]] inline std::optional<quint32> strictColour(QStringView text)
{
    const auto isDigit = [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') ||
               (c >= u'A' && c <= u'F');
    };
    if (text.size() != 6 || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return text.toUInt(nullptr, 16);
}
