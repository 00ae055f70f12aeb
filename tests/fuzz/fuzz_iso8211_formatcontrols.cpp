#include "iso8211/sio_8211ddrfield.h"
#include "iso8211/sio_8211field.h"
#include "iso8211/sio_8211fieldformat.h"
#include "iso8211/sio_8211formatcontrols.h"
#include "iso8211/sio_8211leader.h"

#include <sstream>
#include <vector>

// The input is the bytes of a descriptive field, and format controls as well.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const sio_8211Converter_BI16 converter;
    static const sio_8211ConverterHints hints = {{"ELEVATION", &converter}};
    const std::string bytes(reinterpret_cast<const char *>(data), size);

    sio_8211DDRLeader leader;
    std::istringstream leaderBytes("000002L   0600000   2204");
    leaderBytes >> leader;
    sio_8211Field field(static_cast<std::int32_t>(size));
    std::istringstream in(bytes + '\x1E');
    in >> field;
    sio_8211FieldFormat format;
    sio_8211MakeFieldFormat(format, sio_8211DDRField(leader, field), "CVLS", &hints);

    std::vector<sio_8211SubfieldFormat> subfields(20);
    sio_8211ParseFormatControls(bytes, subfields, &hints);
    return 0;
}
