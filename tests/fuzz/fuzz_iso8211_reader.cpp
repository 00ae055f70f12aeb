#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"

#include <sstream>

namespace {

std::size_t walked = 0;

int countSubfield(sc_Subfield subfield)
{
    walked += subfield.getMnemonic().size();
    return 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const sio_8211Converter_BI16 converter;
    static const sio_8211ConverterHints hints = {{"ELEVATION", &converter}};
    UseSubfield = countSubfield;
    std::istringstream in(std::string(reinterpret_cast<const char *>(data), size));
    std::ostream nowhere(nullptr);
    sio_8211Reader reader(in, &hints);
    sc_Record record;
    for (sio_8211ForwardIterator i(reader); i; ++i) {
        i.get(record);
        nowhere << record;
    }
    return 0;
}
