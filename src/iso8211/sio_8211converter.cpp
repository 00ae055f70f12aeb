#include "iso8211/sio_8211converter.h"

#include "iso8211/sc_subfield.h"
#include "iso8211/sio_utils.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace iso8211 {

namespace {

std::string_view textOf(const char *data, std::int32_t length)
{
    return std::string_view(data, std::size_t(length));
}

// Out of range becomes infinite, as the hardware has it.
float narrowed(double number)
{
    constexpr double Most = std::numeric_limits<float>::max();
    if (std::isfinite(number) && std::abs(number) > Most) {
        // Half a step beyond the greatest float still rounds down to it.
        const double halfStep = std::ldexp(1.0, 103);
        const bool fits = std::abs(number) < Most + halfStep;
        const float size = fits ? std::numeric_limits<float>::max()
                                : std::numeric_limits<float>::infinity();
        return number < 0.0 ? -size : size;
    }
    return static_cast<float>(number);
}

} // namespace

std::int32_t sio_8211Converter::findVariableSubfieldLength(const char *data,
                                                           std::int32_t maxLength,
                                                           char delimiter) const
{
    if (maxLength < 1)
        return 0;
    const auto *const end =
        static_cast<const char *>(memchr(data, delimiter, std::size_t(maxLength)));
    return end != nullptr ? static_cast<std::int32_t>(end - data) : maxLength;
}

std::int32_t sio_8211Converter::makeVarSubfield(sc_Subfield *subfield, const char *data,
                                                std::int32_t maxLength,
                                                char delimiter) const
{
    const std::int32_t length = findVariableSubfieldLength(data, maxLength, delimiter);
    return makeFixedSubfield(subfield, data, length);
}

std::int32_t sio_8211TextConverter::makeFixedSubfield(sc_Subfield *subfield,
                                                      const char *data,
                                                      std::int32_t length) const
{
    const std::int32_t bytes = std::max(length, 0);
    setValue(*subfield, data, bytes);
    if (bytes == 0)
        subfield->setUnvalued();
    return bytes;
}

void sio_8211Converter_A::setValue(sc_Subfield &subfield, const char *data,
                                   std::int32_t length) const
{
    subfield.setA(sio_Utils::getString(data, 0, length));
}

void sio_8211Converter_I::setValue(sc_Subfield &subfield, const char *data,
                                   std::int32_t length) const
{
    subfield.setI(sio_Utils::longOf(textOf(data, length)));
}

void sio_8211Converter_R::setValue(sc_Subfield &subfield, const char *data,
                                   std::int32_t length) const
{
    subfield.setR(sio_Utils::doubleOf(textOf(data, length)));
}

void sio_8211Converter_S::setValue(sc_Subfield &subfield, const char *data,
                                   std::int32_t length) const
{
    subfield.setS(sio_Utils::doubleOf(textOf(data, length)));
}

namespace sio_8211Kinds {

void BI8::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBI8(static_cast<std::int8_t>(raw));
}

void BI16::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBI16(static_cast<std::int16_t>(raw));
}

void BI24::set(sc_Subfield &subfield, std::uint64_t raw)
{
    // The sign bit is brought to the top and back again.
    subfield.setBI24(static_cast<std::int32_t>(raw << 8) >> 8);
}

void BI32::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBI32(static_cast<std::int32_t>(raw));
}

void BUI8::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBUI8(
        static_cast<std::uint32_t>(std::int32_t{static_cast<std::int8_t>(raw)}));
}

void BUI16::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBUI16(static_cast<std::uint32_t>(raw));
}

void BUI24::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBUI24(static_cast<std::uint32_t>(raw));
}

void BUI32::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBUI32(static_cast<std::uint32_t>(raw));
}

void BFP32::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBFP32(std::bit_cast<float>(static_cast<std::uint32_t>(raw)));
}

void BFP64::set(sc_Subfield &subfield, std::uint64_t raw)
{
    subfield.setBFP32(narrowed(std::bit_cast<double>(raw)));
}

} // namespace sio_8211Kinds

} // namespace iso8211
