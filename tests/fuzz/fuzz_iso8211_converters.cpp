#include "iso8211/sc_subfield.h"
#include "iso8211/sio_8211converter.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace {

const sio_8211Converter_A converterA;
const sio_8211Converter_C converterC;
const sio_8211Converter_I converterI;
const sio_8211Converter_R converterR;
const sio_8211Converter_S converterS;
const sio_8211Converter_BI8 converterBI8;
const sio_8211Converter_BI16 converterBI16;
const sio_8211Converter_BI24 converterBI24;
const sio_8211Converter_BI32 converterBI32;
const sio_8211Converter_BUI8 converterBUI8;
const sio_8211Converter_BUI16 converterBUI16;
const sio_8211Converter_BUI24 converterBUI24;
const sio_8211Converter_BUI32 converterBUI32;
const sio_8211Converter_BFP32 converterBFP32;
const sio_8211Converter_BFP64 converterBFP64;

const std::array<const sio_8211Converter *, 15> Converters = {
    &converterA,     &converterC,     &converterI,     &converterR,     &converterS,
    &converterBI8,   &converterBI16,  &converterBI24,  &converterBI32,  &converterBUI8,
    &converterBUI16, &converterBUI24, &converterBUI32, &converterBFP32, &converterBFP64};

} // namespace

// A byte for the converter, one for the delimiter, two for the declared width, then
// the bytes of the field.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 4)
        return 0;
    const sio_8211Converter *const converter = Converters[data[0] % Converters.size()];
    const char delimiter = static_cast<char>(data[1]);
    const std::int32_t width = data[2] * 256 + data[3];
    // A block of its own, so that a read beyond it is noticed.
    const std::vector<char> bytes(data + 4, data + size);
    const auto rest = static_cast<std::int32_t>(bytes.size());

    sc_Subfield subfield;
    std::int32_t consumed =
        converter->makeVarSubfield(&subfield, bytes.data(), rest, delimiter);
    if (consumed < 0 || consumed > rest)
        std::abort();
    const bool fits = converter->bytesOf(width) <= rest;
    consumed = converter->makeFixedSubfield(&subfield, bytes.data(),
                                            fits ? width : converter->lengthWithin(rest));
    if (consumed < 0 || consumed > rest)
        std::abort();
    const sc_Subfield copy = subfield;
    return copy.getSubfieldType() == subfield.getSubfieldType() ? 0 : -1;
}
