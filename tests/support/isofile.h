#pragma once

#include <string>
#include <vector>

/// Makes ISO/IEC 8211 files byte by byte, as the transfers of digital elevation
/// models have them.
namespace isofile {

/// One field of a data descriptive record.
struct Description {
    std::string tag;
    std::string name;
    std::string labels;       // "MODN!RCID", with a leading '*' for an array
    std::string controls;     // "(A,I)"
    std::string codes = "16"; // structure and type
};

/// One field of a data record, without its terminator.
struct Field {
    std::string tag;
    std::string bytes;
};

/// The record that describes the others, with the two fields of its own that no
/// reader takes for data.
[[nodiscard]] std::string ddr(const std::vector<Description> &fields);

/// A record with leader and directory.
[[nodiscard]] std::string record(const std::vector<Field> &fields,
                                 char leaderIdentifier = 'D');

/// A record of so many fields, at most 7,000, that hold nothing: their tags are a letter
/// and four digits. One with the identifier L describes them.
[[nodiscard]] std::string manyFields(int count, char letter, char leaderIdentifier = 'D');

/// The field area alone, as a record that reuses an earlier directory has it.
[[nodiscard]] std::string fieldArea(const std::vector<Field> &fields);

/// Texts joined by the unit terminator, the last one ended by it too.
[[nodiscard]] std::string units(const std::vector<std::string> &texts);

/// The low bytes of a number, high byte first.
[[nodiscard]] std::string bigEndian(long long number, int bytes);

} // namespace isofile
