#include "importers/numbers.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace {

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Whether 0x and at least one digit follow.
bool startsHex(const char *p, const char *end)
{
    return end - p > 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X') && isHexDigit(p[2]);
}

double unsignedNumber(const char *p, const char *end)
{
    double value = 0.0;
    if (startsHex(p, end)) {
        std::from_chars(p + 2, end, value, std::chars_format::hex);
        return value;
    }
    const auto [stop, fault] = std::from_chars(p, end, value);
    // Tells too large from too small, which from_chars does not.
    if (fault == std::errc::result_out_of_range)
        return QString::fromLatin1(p, stop - p).toDouble();
    return value;
}

} // namespace

double leadingNumber(QByteArrayView text)
{
    const char *p = text.data();
    const char *const end = p + text.size();
    while (p != end && isBlank(*p))
        ++p;
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+'))
        ++p;
    if (p == end || *p == '-') // from_chars would take a second sign
        return 0.0;
    const double value = unsignedNumber(p, end);
    return negative ? -value : value;
}

QString wholeNumberText(double value)
{
    return QString::number(std::trunc(value) + 0.0, 'f', 0); // + 0.0: no "-0"
}
