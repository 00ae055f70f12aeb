// Writes the seeds of the fuzz entries: makecorpus FOLDER. Each is a small file of
// its kind, made here byte by byte.

#include "support/isofile.h"

#include <algorithm>
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

void writeTgaSeeds()
{
    const auto head = [](char kind, char depth, char descriptor) {
        std::string bytes(18, '\0');
        bytes[2] = kind;
        bytes[12] = 3; // width
        bytes[14] = 2; // height
        bytes[16] = depth;
        bytes[17] = descriptor;
        return bytes;
    };
    const std::string pixels(3 * 2 * 4, 'p');
    writeSeed("fuzz_tga", "top_left", head(2, 24, 0x20) + pixels);
    writeSeed("fuzz_tga", "bottom_right", head(2, 32, 0x10) + pixels);
    writeSeed("fuzz_tga", "one_byte", head(2, 8, 0) + pixels);
    writeSeed("fuzz_tga", "packed", head(10, 24, 0) + pixels);
}

// Frames of 3 by 2 pixels; the first bytes are the format and the size.
void writeFrameSeeds()
{
    const auto write = [](char format, const std::string &name, const std::string &file) {
        writeSeed("fuzz_picturecheck", name, std::string{format, 3, 2} + file);
    };
    std::string tga(18, '\0');
    tga[2] = 2;
    tga[12] = 3;
    tga[14] = 2;
    tga[16] = 24;
    write(0, "tga", tga + std::string(3 * 2 * 3, 'p'));
    // The checksums of its chunks are right.
    const char png[] = "\x89PNG\x0D\x0A\x1A\x0A\x00\x00\x00\x0DIHDR\x00\x00\x00\x03"
                       "\x00\x00\x00\x02\x08\x02\x00\x00\x00\x12\x16\xF1M\x00\x00"
                       "\x00\x03IDATxyz\xED\x05-\xD7\x00\x00\x00\x00IEND\xAE"
                       "B`"
                       "\x82";
    write(1, "png", std::string(png, sizeof png - 1));
    write(
        2, "jpg",
        std::string("\xFF\xD8\xFF\xC0\0\x0B\x08\0\x02\0\x03\x01\x01\x11\0\xFF\xD9", 17));
    write(3, "ppm", "P6 # a comment\n3 2\n255\n" + std::string(3 * 2 * 3, 'p'));
}

// Heads of 5 by 4 heights, one variable with an attribute, and one along records.
void writeNetCdfSeeds()
{
    const auto write = [](char version) {
        const std::size_t countBytes = version == 5 ? 8 : 4;
        const std::size_t placeBytes = version == 1 ? 4 : 8;
        const auto number = [](int value, std::size_t bytes) {
            return std::string(bytes - 1, '\0') + static_cast<char>(value);
        };
        const auto word = [&](int value) { return number(value, 4); };
        const auto count = [&](int value) { return number(value, countBytes); };
        const std::string x = count(1) + std::string("x\0\0\0", 4);
        const std::string y = count(1) + std::string("y\0\0\0", 4);
        const std::string attribute =
            word(12) + count(1) + x + word(2) + count(3) + std::string("abc\0", 4);
        const std::string dimensions =
            word(10) + count(3) + x + count(5) + y + count(4) + x + count(0);
        const std::string heights = x + count(2) + count(1) + count(0) + attribute +
                                    word(3) + count(40) + number(200, placeBytes);
        const std::string times = y + count(1) + count(2) + word(0) + count(0) + word(6) +
                                  count(8) + number(240, placeBytes);
        writeSeed("fuzz_netcdf", std::string("version_") + char('0' + version),
                  std::string("CDF") + version + count(1) + dimensions + attribute +
                      word(11) + count(2) + heights + times);
    };
    for (const char version : {'\1', '\2', '\5'})
        write(version);
}

void writeMeshSeeds()
{
    std::string grid = "x y z\n";
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            grid += std::to_string(x) + ' ' + std::to_string(y) + "\t" +
                    std::to_string(x * y) + ".5\n";
    writeSeed("fuzz_ascii_mesh", "grid", grid);
    writeSeed("fuzz_ascii_mesh", "odd",
              "0 0 0\n\n 1 2\n1e3,2,3\n-1 -2 +3e-1 4\r\nnan inf 0");
}

std::string justified(const std::string &text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

void writeUsgsSeed()
{
    const auto real = [](const std::string &digits) { return justified(digits, 24); };
    std::string header = std::string("TILE") + std::string(105, ' ') +
                         "-1173015.2500  34 730.12341 SECORIG";
    for (const char *const code : {"1", "0", "1", "11"})
        header += justified(code, 6);
    for (int i = 0; i < 15; ++i)
        header += real("0.0");
    header += justified("2", 6) + justified("2", 6) + justified("4", 6);
    for (const char *const corner :
         {"1000", "2000", "1000", "2060", "1060", "2060", "1060", "2000"})
        header += real(corner);
    header += real("0.1D+02") + real("0.9D+02") + real("0.0") + justified("0", 6) +
              justified("30.0", 12) + justified("30.0", 12) + justified("1.0", 12) +
              justified("0", 6) + justified("3", 6);
    std::string file = header + std::string(1024 - header.size(), ' ');
    for (int column = 0; column < 3; ++column) {
        const std::string easting = std::to_string(1000 + 30 * column);
        std::string profile = justified("1", 6) +
                              justified(std::to_string(column + 1), 6) +
                              justified("3", 6) + justified("1", 6) + real(easting) +
                              real("2000") + real("0.0") + real("10") + real("90");
        for (const char *const sample : {"10", "-9999", "90"})
            profile += justified(sample, 6);
        file += profile + std::string(1024 - profile.size(), ' ');
    }
    writeSeed("fuzz_usgsdem", "three_profiles", file);
}

void writeOtherSeeds()
{
    writeSeed("fuzz_bindem", "bil",
              "BYTEORDER M\nLAYOUT BIL\nNROWS 2\nNCOLS 3\nNBANDS 1\nNBITS 16\n"
              "NODATA -9999\nULXMAP 10.5\nULYMAP 20.5\nXDIM 1.0\nYDIM 1.0\n" +
                  std::string(1, '\0') + isofile::bigEndian(0x0102030405, 5) + "1234567");
    writeSeed("fuzz_bindem", "colons",
              "number_of_rows: 4\nnumber_of_columns = 4\nbits_per_pixel 8\n");
    writeSeed("fuzz_japandem", "three_columns",
              "543800 anything at all  3  2 more\nprefix 01   12-0034-9999 rest\n"
              "prefix 02  +5   ab     0\n");
    writeSeed("fuzz_scenery", "straight",
              "[Param]\nBeobXA=100.5\nBeobXE = -2e3\nBildanzahl=5\nAusgabePNG=1\n"
              "AusDateiname=frame%03d\nHintergrund=255,128,0\nGenauRechnen=1\n");
    std::string flight = "[Param]\nRundflug=1\nHoeheUeberBoden=50\n";
    for (int i = 0; i < 5; ++i) {
        const std::string key = "Punkt0" + std::to_string(i);
        for (const char *const value : {"=10,20", "_z=30", "_i=0.5", "_a=1.5", "_p=-1"})
            flight += key + value + '\n';
        flight.append("c").append(key).append("=10,20,30\n");
    }
    writeSeed("fuzz_scenery", "curved", flight);
    writeSeed("fuzz_scenery", "extras",
              "[Param]\nBeobXA=1\n\n[Extras]\nSun=time\nSunTime=2026-06-21T12:00:00Z\n"
              "Latitude=\nWaterMask=0000ff\nSkyLight=2\nExposure=1,5\nSeed=-7\n"
              "HazeDistance=3e4\nFog=1\r\n[Clouds]\n\nWater=1\n");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    corpus = argv[1];
    writeIso8211Seeds();
    writeTgaSeeds();
    writeFrameSeeds();
    writeNetCdfSeeds();
    writeMeshSeeds();
    writeUsgsSeed();
    writeOtherSeeds();
    return 0;
}
