#include "iso8211/sio_utils.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <locale>
#include <sstream>

namespace iso8211 {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view withoutLeadingSpace(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// The bytes before a first zero byte.
std::string_view upToZero(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

// Takes a sign off the front; true for a minus.
bool takeSign(std::string_view &text)
{
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    return isNegative;
}

std::size_t digitsAt(std::string_view text, std::size_t from)
{
    const auto *const end = text.data() + text.size();
    return std::size_t(std::find_if_not(text.data() + from, end, isDigit) - text.data()) -
           from;
}

// What a stream takes for an unsigned number: digits with a point, an exponent.
struct NumberShape {
    std::size_t length = 0;
    bool isWhole = false; // a mantissa, and digits in an exponent that was begun
};

NumberShape shapeOf(std::string_view text)
{
    NumberShape shape;
    std::size_t digits = digitsAt(text, 0);
    shape.length = digits;
    if (shape.length < text.size() && text[shape.length] == '.') {
        const std::size_t fraction = digitsAt(text, shape.length + 1);
        digits += fraction;
        shape.length += 1 + fraction;
    }
    shape.isWhole = digits > 0;
    if (!shape.isWhole || shape.length == text.size() ||
        (text[shape.length] != 'e' && text[shape.length] != 'E'))
        return shape;
    std::size_t exponent = shape.length + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
        ++exponent;
    const std::size_t exponentDigits = digitsAt(text, exponent);
    shape.isWhole = exponentDigits > 0;
    shape.length = exponent + exponentDigits;
    return shape;
}

// What a stream makes of a number beyond the greatest or below the smallest: the
// greatest, or a number next to zero. Seldom asked, and too slow for all the others.
double asAStreamHasIt(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double number = 0.0;
    stream >> number;
    return number;
}

} // namespace

std::int32_t sio_Utils::longOf(std::string_view text)
{
    text = withoutLeadingSpace(upToZero(text));
    const bool isNegative = takeSign(text);
    std::int64_t number = 0;
    constexpr std::int64_t Beyond =
        std::int64_t(std::numeric_limits<std::int32_t>::max()) +
        1; // the magnitude of the lowest number
    for (const char c : text) {
        if (!isDigit(c))
            break;
        number = std::min(number * 10 + (c - '0'), Beyond);
    }
    if (isNegative)
        return static_cast<std::int32_t>(-number);
    return static_cast<std::int32_t>(std::min(number, Beyond - 1));
}

double sio_Utils::doubleOf(std::string_view text)
{
    text = withoutLeadingSpace(upToZero(text));
    const bool isNegative = takeSign(text);
    const NumberShape shape = shapeOf(text);
    if (!shape.isWhole)
        return 0.0;
    double number = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + shape.length, number);
    if (result.ec == std::errc::result_out_of_range)
        number = asAStreamHasIt(text.substr(0, shape.length));
    return isNegative ? -number : number;
}

std::int32_t sio_Utils::getLong(const char *buf, std::int32_t start, std::int32_t length)
{
    return longOf(std::string_view(buf + start, std::size_t(std::max(length, 0))));
}

std::string sio_Utils::getString(const char *buf, std::int32_t start, std::int32_t length)
{
    return std::string(
        upToZero(std::string_view(buf + start, std::size_t(std::max(length, 0)))));
}

void sio_Utils::seekTo(std::istream &stream, std::int64_t position)
{
    if (stream.eof() || std::int64_t(stream.tellg()) != position)
        stream.seekg(position);
}

} // namespace iso8211
