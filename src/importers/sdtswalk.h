#pragma once

#include "base/progress.h"

#include <string>

/// Which converter reads the binary subfields of a label: one of "I", "R", "S",
/// "BI8", "BI16", "BI24", "BI32", "BUI8", "BUI16", "BUI24", "BUI32", "BFP32",
/// "BFP64". A table of these ends at a row without a mnemonic.
struct CConverterType {
    const char *mnemonic = nullptr;
    const char *converterName = nullptr;
};

/// Reads a module and inserts its records into std::cout, which calls UseSubfield
/// for each subfield in the order of the file. A record that cannot be read to its
/// end is walked as far as it goes, and is the last. 0 at the end of the module, -1
/// if the file cannot be opened.
int ReadSDTS(const char *fileName, const CConverterType *hints);

/// The same, with steps by bytes. False if it was asked to stop.
[[nodiscard]] bool walkSDTS(const char *fileName, const CConverterType *hints,
                            Progress &progress);

/// Turns capitals to small letters, byte by byte and in place.
void toLowerCaseSTD(std::string &text);
