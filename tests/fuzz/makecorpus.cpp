// Writes the seeds of the fuzz entries: makecorpus FOLDER. Each is a small file of
// its kind, made here byte by byte.

#include "support/isofile.h"

#include <filesystem>
#include <fstream>

namespace {

std::filesystem::path corpus;

void writeSeed(const std::string &entry, const std::string &name,
               const std::string &bytes)
{
    const std::filesystem::path folder = corpus / entry;
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << bytes;
}

std::string rasterCells(char leaderIdentifier)
{
    using namespace isofile;
    std::string file = ddr({{"CELL", "CELL", "MODN!RCID!ROWI!COLI", "(A,3I)"},
                            {"CVLS", "VALUES", "*ELEVATION", "(B(16))", "26"}});
    for (int row = 1; row <= 3; ++row) {
        const std::vector<Field> fields = {
            {"0001", "     1"},
            {"CELL", units({"CEL0", "1", std::to_string(row), "1"})},
            {"CVLS", bigEndian(100 * row, 2) + bigEndian(-row, 2)}};
        const bool isReusing = leaderIdentifier == 'R' && row > 1;
        file += isReusing ? fieldArea(fields) : record(fields, leaderIdentifier);
    }
    return file;
}

void writeIso8211Seeds()
{
    using namespace isofile;
    writeSeed("fuzz_iso8211_reader", "cells_d", rasterCells('D'));
    writeSeed("fuzz_iso8211_reader", "cells_r", rasterCells('R'));
    writeSeed("fuzz_iso8211_reader", "attributes",
              ddr({{"ATPR", "PRIMARY", "MODN!RCID", "(A(4),I(6))"},
                   {"ATTP", "ATTRIBUTES", "A!B!C", "(R,S(5),X)"}}) +
                  record({{"ATPR", "APRI     1"}, {"ATTP", units({"1.5E3"})}}));
    writeSeed("fuzz_iso8211_reader", "description_only",
              ddr({{"CATD", "CATALOG", "MODN!RCID", "(A,I)"}}));

    int count = 0;
    for (const char *const controls :
         {"(A,I(5),R(,))", "(3I(2))", "(2(I(2)))", "((I,R))", "(B(16),X,c(8))"})
        writeSeed("fuzz_iso8211_formatcontrols", "controls" + std::to_string(++count),
                  controls);
    writeSeed("fuzz_iso8211_formatcontrols", "field",
              "2600;&CELL VALUES\x1F*ELEVATION!B!C\x1F(B(16),2I)");

    for (char kind = 0; kind < 15; ++kind)
        writeSeed("fuzz_iso8211_converters", "kind" + std::to_string(int(kind)),
                  std::string(1, kind) + ';' + std::string(1, '\0') + '\x10' +
                      "-1.25e3;\x80\xFF");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    corpus = argv[1];
    writeIso8211Seeds();
    return 0;
}
