#include "support/sdtstransfer.h"

namespace sdts {

using isofile::units;

Catalog usualCatalog()
{
    return {{"DDSH", "TR01DDSH.DDF"}, {"DDOM", "TR01DDOM.DDF"}, {"CEL0", "TR01CEL0.DDF"}};
}

std::string catalog(const Catalog &modules)
{
    std::string file = isofile::ddr(
        {{"CATD", "CATALOG/DIRECTORY", "MODN!RCID!NAME!TYPE!FILE", "(A,I,3A)"}});
    for (const auto &[module, name] : modules)
        file += isofile::record(
            {{"0001", "     1"}, {"CATD", units({"CATD", "1", module, "", name})}});
    return file;
}

std::string schema(const std::string &unit, const std::string &format,
                   const std::string &label)
{
    return isofile::ddr({{"DDSH", "DATA DICTIONARY/SCHEMA", "MODN!RCID!ATLB!FMT!UNIT",
                          "(A,I,3A)"}}) +
           isofile::record({{"DDSH", units({"DDSH", "1", label, format, unit})}});
}

std::string domain(const Domain &values)
{
    std::string file = isofile::ddr(
        {{"DDOM", "DATA DICTIONARY/DOMAIN", "MODN!RCID!DVAL!DVDF", "(A,I,R,A)"}});
    for (const auto &[value, definition] : values)
        file += isofile::record({{"DDOM", units({"DDOM", "1", value, definition})}});
    return file;
}

std::string cells(int columns, int rows, const Elevation &elevation, int bytesPerCell,
                  char leaderIdentifier)
{
    const std::string width = std::to_string(bytesPerCell * 8);
    std::string file =
        isofile::ddr({{"CELL", "CELL", "MODN!RCID!ROWI!COLI", "(A,I,I(6),I)"},
                      {"CVLS", "CELL VALUES", "*ELEVATION", "(B(" + width + "))", "26"}});
    for (int row = 0; row < rows; ++row) {
        std::string values;
        for (int column = 0; column < columns; ++column)
            values += isofile::bigEndian(elevation(column, row), bytesPerCell);
        const std::string number = std::to_string(row + 1);
        const std::string padded = std::string(6 - number.size(), ' ') + number;
        const std::vector<isofile::Field> fields = {
            {"0001", padded},
            {"CELL", units({"CEL0", "1", padded + "1"})},
            {"CVLS", values}};
        file += leaderIdentifier == 'R' && row > 0
                    ? isofile::fieldArea(fields)
                    : isofile::record(fields, leaderIdentifier);
    }
    return file;
}

std::map<std::string, std::string> transfer(int columns, int rows,
                                            const Elevation &elevation)
{
    return {{"TR01CATD.DDF", catalog()},
            {"TR01DDSH.DDF", schema()},
            {"TR01DDOM.DDF", domain()},
            {"TR01CEL0.DDF", cells(columns, rows, elevation)}};
}

} // namespace sdts
