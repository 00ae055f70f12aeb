#include "support/isofile.h"

namespace isofile {
namespace {

constexpr char FieldEnd = 0x1E;
constexpr char UnitEnd = 0x1F;

std::string padded(std::size_t number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return std::string(width - digits.size(), '0') + digits;
}

// Directory entries of tag 4, length 5, position 6.
std::string directory(const std::vector<Field> &fields)
{
    std::string out;
    std::size_t position = 0;
    for (const Field &field : fields) {
        const std::size_t length = field.bytes.size() + 1;
        out += field.tag + padded(length, 5) + padded(position, 6);
        position += length;
    }
    return out + FieldEnd;
}

std::string assemble(const std::vector<Field> &fields, const std::string &level,
                     const std::string &controlLength)
{
    const std::string entries = directory(fields);
    const std::string area = fieldArea(fields);
    const std::size_t base = 24 + entries.size();
    // A length that five digits cannot hold is written as 0.
    const std::size_t length = base + area.size() > 99999 ? 0 : base + area.size();
    return padded(length, 5) + level + controlLength + padded(base, 5) + "   5604" +
           entries + area;
}

} // namespace

std::string ddr(const std::vector<Description> &fields)
{
    std::vector<Field> out = {{"0000", "0000;&"},
                              {"0001", "0100;&DDF RECORD IDENTIFIER"}};
    for (const Description &field : fields)
        out.push_back({field.tag, field.codes + "00;&" + field.name + UnitEnd +
                                      field.labels + UnitEnd + field.controls});
    return assemble(out, "2L   ", "06");
}

std::string record(const std::vector<Field> &fields, char leaderIdentifier)
{
    return assemble(fields, std::string(" ") + leaderIdentifier + "   ", "  ");
}

std::string manyFields(int count, char letter, char leaderIdentifier)
{
    std::string entries;
    for (int i = 0; i < count; ++i)
        entries += letter + padded(std::size_t(i), 4) + '1' + padded(std::size_t(i), 5);
    entries += FieldEnd;
    return "000002" + std::string(1, leaderIdentifier) + "   00" +
           padded(24 + entries.size(), 5) + "   1505" + entries +
           std::string(std::size_t(count), FieldEnd);
}

std::string fieldArea(const std::vector<Field> &fields)
{
    std::string out;
    for (const Field &field : fields)
        out += field.bytes + FieldEnd;
    return out;
}

std::string units(const std::vector<std::string> &texts)
{
    std::string out;
    for (const std::string &text : texts)
        out += text + UnitEnd;
    return out;
}

std::string bigEndian(long long number, int bytes)
{
    std::string out;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        out += static_cast<char>(number >> shift);
    return out;
}

} // namespace isofile
