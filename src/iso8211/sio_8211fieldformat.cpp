#include "iso8211/sio_8211fieldformat.h"

#include "iso8211/sio_8211ddrfield.h"
#include "iso8211/sio_8211formatcontrols.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace iso8211 {

namespace {

// A label for each subfield, up to the first empty one.
void appendLabels(sio_8211FieldFormat &format, std::string_view descriptor)
{
    while (!descriptor.empty()) {
        const std::string_view label = descriptor.substr(0, descriptor.find('!'));
        if (label.empty())
            return;
        format.emplace_back().setLabel(std::string(label));
        descriptor.remove_prefix(std::min(descriptor.size(), label.size() + 1));
    }
}

} // namespace

bool sio_8211MakeFieldFormat(sio_8211FieldFormat &format, const sio_8211DDRField &field,
                             const std::string &tag, const sio_8211ConverterHints *hints)
{
    format.setTag(tag);
    format.setName(field.getDataFieldName());
    const int structCode = field.getDataStructCode() - '0';
    const int typeCode = field.getDataTypeCode() - '0';
    if (structCode < sio_8211FieldFormat::elementary ||
        structCode > sio_8211FieldFormat::concatenated)
        return false;
    format.setDataStructCode(sio_8211FieldFormat::dataStructCode(structCode));
    if (typeCode < sio_8211FieldFormat::char_string ||
        typeCode > sio_8211FieldFormat::mixed_data_type)
        return false;
    format.setDataTypeCode(sio_8211FieldFormat::dataTypeCode(typeCode));

    std::string_view descriptor = field.getArrayDescriptor();
    if (structCode == sio_8211FieldFormat::array && descriptor.starts_with('*'))
        descriptor.remove_prefix(1);
    const std::size_t first = format.size();
    appendLabels(format, descriptor);
    sio_8211ParseFormatControls(field.getFormatControls(),
                                std::span<sio_8211SubfieldFormat>(format).subspan(first),
                                hints);
    return true;
}

} // namespace iso8211
