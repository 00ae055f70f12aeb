#include "terrain/pointtext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view unquoted(std::string_view field)
{
    field = trimmed(field);
    if (field.size() < 2 || field.front() != field.back() ||
        (field.front() != '"' && field.front() != '\''))
        return field;
    return trimmed(field.substr(1, field.size() - 2));
}

// Where the field that begins at `from` ends: at a separator outside of quotation marks.
template <typename IsSeparator>
std::size_t fieldEnd(std::string_view line, std::size_t from, IsSeparator isSeparator)
{
    bool isQuoted = false;
    std::size_t at = from;
    for (; at < line.size(); ++at) {
        if (line[at] == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && isSeparator(line[at]))
            break;
    }
    return at;
}

int splitAtBlanks(std::string_view line, PointFields &fields)
{
    int count = 0;
    std::size_t at = 0;
    while (count < MostPointColumns) {
        while (at < line.size() && isBlank(line[at]))
            ++at;
        if (at == line.size())
            break;
        const std::size_t end = fieldEnd(line, at, isBlank);
        fields[std::size_t(count++)] = unquoted(line.substr(at, end - at));
        at = end;
    }
    return count;
}

// A copy of a number in the form that the standard library reads.
struct PlainNumber {
    std::array<char, 64> text{};
    std::size_t size = 0;
};

std::optional<PlainNumber> plainNumber(std::string_view field, char decimalPoint)
{
    PlainNumber plain;
    // A point at the end is that of a list where it is a comma.
    if (field.size() > plain.text.size() || (decimalPoint == ',' && field.back() == ','))
        return {};
    for (const char c : field) {
        if (c == '.' && decimalPoint != '.')
            return {};
        char &to = plain.text[plain.size++];
        to = c == decimalPoint ? '.' : c == 'D' || c == 'd' ? 'e' : c;
    }
    return plain;
}

constexpr std::array<double, 5> VoidHeights{-9999.0, -99999.0, -32767.0, -32768.0,
                                            -999999.0};
constexpr double BeyondTheEarth = 1e9; // metres

} // namespace

int splitPointLine(std::string_view line, char separator, PointFields &fields)
{
    if (separator == ' ')
        return splitAtBlanks(line, fields);
    int count = 0;
    std::size_t at = 0;
    while (count < MostPointColumns) {
        const std::size_t end =
            fieldEnd(line, at, [separator](char c) { return c == separator; });
        fields[std::size_t(count++)] = unquoted(line.substr(at, end - at));
        if (end == line.size())
            break;
        at = end + 1;
    }
    return count;
}

bool isRemark(std::string_view line)
{
    const std::string_view text = trimmed(line);
    return text.empty() || text.front() == '#' || text.front() == '!' ||
           text.front() == '%' || text.substr(0, 2) == "//";
}

std::optional<double> pointNumber(std::string_view field, char decimalPoint)
{
    if (!field.empty() && field.front() == '+')
        field.remove_prefix(1);
    const std::size_t sign = !field.empty() && field.front() == '-' ? 1 : 0;
    // Words, such as "inf", are no numbers here.
    if (field.size() <= sign || field[sign] == '-' ||
        !((field[sign] >= '0' && field[sign] <= '9') || field[sign] == decimalPoint))
        return {};
    double value = 0.0;
    const char *const end = field.data() + field.size();
    if (decimalPoint == '.') {
        const auto [stop, error] = std::from_chars(field.data(), end, value);
        if (stop == end)
            return error == std::errc() ? std::optional(value) : std::nullopt;
    }
    const std::optional<PlainNumber> plain = plainNumber(field, decimalPoint);
    if (!plain)
        return {};
    const char *const plainEnd = plain->text.data() + plain->size;
    const auto [stop, error] = std::from_chars(plain->text.data(), plainEnd, value);
    if (stop != plainEnd || error != std::errc())
        return {};
    return value;
}

bool isMissingHeight(std::string_view field)
{
    constexpr std::array<std::string_view, 10> words{
        "", "nan", "na", "n/a", "null", "nodata", "none", "-", "*", "void"};
    const auto isSameLetter = [](char given, char letter) {
        return (given >= 'A' && given <= 'Z' ? given - 'A' + 'a' : given) == letter;
    };
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
        return std::equal(field.begin(), field.end(), word.begin(), word.end(),
                          isSameLetter);
    });
}

bool isMissingHeight(double height)
{
    return !(std::fabs(height) < BeyondTheEarth) ||
           std::find(VoidHeights.begin(), VoidHeights.end(), height) != VoidHeights.end();
}
