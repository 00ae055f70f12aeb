#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

/// How the lines of a file of points are written.
struct PointFormat {
    char separator = ' '; ///< ' ' stands for any number of blanks and tabs
    char decimalPoint = '.';
    int skippedLines = 0;                ///< ahead of the points
    std::array<int, 3> columns{0, 1, 2}; ///< of x, y and z, from 0
    bool isGeographic = false;           ///< x is a longitude, y a latitude, degrees

    bool operator==(const PointFormat &) const = default;
};

/// Most columns of a line that are looked at.
constexpr int MostPointColumns = 64;
using PointFields = std::array<std::string_view, MostPointColumns>;

/// Splits a line; gives how many fields there are. Blanks and quotation marks around a
/// field are taken away; a separator inside of quotation marks is none.
[[nodiscard]] int splitPointLine(std::string_view line, char separator,
                                 PointFields &fields);

/// Whether a line holds nothing but blanks, or is a remark: it begins with one of #, !, %
/// or //.
[[nodiscard]] bool isRemark(std::string_view line);

/// The number that a field is, also one with an exponent after a D; nothing where it is
/// no finite number.
[[nodiscard]] std::optional<double> pointNumber(std::string_view field,
                                                char decimalPoint);

/// Whether a field without a number stands for a height that is not there: it is empty,
/// "nan", "null", "nodata", "-" or "*".
[[nodiscard]] bool isMissingHeight(std::string_view field);

/// Whether a number stands for a height that is not there, as files of the field have
/// it: -9999, -99999, -32767, -32768 and what no place on earth can be.
[[nodiscard]] bool isMissingHeight(double height);
