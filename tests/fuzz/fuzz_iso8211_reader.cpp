#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"

#include <cstdlib>
#include <sstream>

namespace {

std::size_t walked = 0;

int countSubfield(sc_Subfield subfield)
{
    walked += subfield.getMnemonic().size() + subfield.getValue().valueType() + 1;
    return 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const sio_8211Converter_BI16 converter;
    static const sio_8211ConverterHints hints = {{"ELEVATION", &converter}};
    UseSubfield = countSubfield;
    const std::string file(reinterpret_cast<const char *>(data), size);
    std::istringstream first(file);
    std::istringstream second(file);
    std::ostream nowhere(nullptr);
    sio_8211Reader reader(first, &hints);
    sio_8211Reader walkedReader(second, &hints);
    sio_8211ForwardIterator walkedRecord(walkedReader);
    sc_Record record;
    for (sio_8211ForwardIterator i(reader); i; ++i, ++walkedRecord) {
        walked = 0;
        const bool isReadable = i.get(record);
        nowhere << record;
        const std::size_t expected = walked;
        walked = 0;
        // The walk of a record that is not held is that of one that is.
        if (!walkedRecord || walkedRecord.walk(nowhere) != isReadable ||
            walked != expected)
            abort();
    }
    if (walkedRecord)
        abort();
    return 0;
}
