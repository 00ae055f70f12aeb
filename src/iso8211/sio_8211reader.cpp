#include "iso8211/sio_8211reader.h"

#include "iso8211/sio_8211ddrfield.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace iso8211 {

namespace {

// What a field and a subfield take up in memory, with the blocks that hold them and a
// text. The letters of a text are bytes of the file and not counted here.
constexpr std::int64_t BlockOverhead = 16;
constexpr std::int64_t BytesOfField = sizeof(sc_Field) + BlockOverhead;
constexpr std::int64_t BytesOfSubfield =
    sizeof(sc_Subfield) + sizeof(std::string) + BlockOverhead;

// Subfields that take up no bytes of the file could make any number of records out of a
// few. No sound record holds more than two for each of its bytes, in fields of their own,
// and some that its end left incomplete.
constexpr std::int64_t BytesAllowed = 1 << 20;
constexpr std::int64_t BytesAllowedPerByte = 2 * (BytesOfField + BytesOfSubfield);

std::int64_t bytesAllowed(const sio_8211DR &dr)
{
    std::int64_t bytes =
        std::int64_t(dr.getDirectory().size()) * sio_8211DirEntry::sizeOf(dr.getLeader());
    for (const sio_8211Field &field : dr.getFieldArea())
        bytes += field.getDataLength() + 1;
    return BytesAllowed + BytesAllowedPerByte * bytes;
}

bool convert(const sio_8211SubfieldFormat &format, const sio_8211Field &field,
             sc_Subfield &subfield, std::int32_t &offset)
{
    const sio_8211Converter *const converter = format.getConverter();
    if (converter == nullptr)
        return false;
    const std::int32_t rest = std::max(field.getDataLength() - offset, 0);
    const char *const data = field.getData() + std::min(offset, field.getDataLength());
    if (format.getFormat() == sio_8211SubfieldFormat::variable) {
        offset +=
            converter->makeVarSubfield(&subfield, data, rest, format.getDelimiter()) + 1;
        return true;
    }
    if (converter->bytesOf(format.getLength()) <= rest) {
        offset += converter->makeFixedSubfield(&subfield, data, format.getLength());
        return true;
    }
    // Too few bytes are left: they are all that this subfield can have.
    converter->makeFixedSubfield(&subfield, data, converter->lengthWithin(rest));
    offset = field.getDataLength();
    return true;
}

} // namespace

// Takes a field of a data record apart, as often as its bytes last. What it fills is
// overwritten where it holds something.
class sio_8211Reader::FieldFiller {
public:
    FieldFiller(const KnownFormat &known, const sio_8211Field &field)
        : m_known(known), m_field(field)
    {
    }

    // The memory that each of the fields takes up.
    [[nodiscard]] std::int64_t bytes() const
    {
        return BytesOfField +
               BytesOfSubfield * static_cast<std::int64_t>(m_known.labels.size());
    }

    // False where a subfield cannot be read; the field then ends with that.
    bool fill(sc_Field &out)
    {
        out.shareMnemonic(m_known.tag);
        out.shareName(m_known.name);
        const std::int32_t start = m_offset;
        const std::size_t count = m_known.labels.size();
        std::size_t used = 0;
        bool isReadable = true;
        while (isReadable && used < count) {
            sc_Subfield &subfield = used < out.size() ? out[used] : out.emplace_back();
            // The fields of attributes name their subfields, all others abbreviate them.
            const sc_Name &label = m_known.labels[used];
            subfield.shareName(m_known.isAttribute ? label : sc_Name());
            subfield.shareMnemonic(m_known.isAttribute ? sc_Name() : label);
            subfield.setUnvalued();
            isReadable = convert((*m_known.format)[used], m_field, subfield, m_offset);
            ++used;
        }
        out.resize(used);
        // What consumes nothing would never come to the end.
        m_atEnd = m_offset >= m_field.getDataLength() || m_offset == start;
        return isReadable;
    }

    [[nodiscard]] bool atEnd() const { return m_atEnd; }

private:
    const KnownFormat &m_known;
    const sio_8211Field &m_field;
    std::int32_t m_offset = 0;
    bool m_atEnd = false;
};

sio_8211Reader::sio_8211Reader(std::istream &stream, const sio_8211ConverterHints *hints)
    : m_stream(stream)
{
    m_stream >> m_ddr;
    if (!m_stream.good())
        return;
    m_firstRecord = m_stream.tellg();
    for (const sio_8211DirEntry &entry : m_ddr.getDirectory()) {
        // The file control field and the record identifier describe no data.
        if (entry.getTag().starts_with("000"))
            continue;
        const sio_8211DDRField field(m_ddr.getLeader(), *entry.getField());
        sio_8211FieldFormat &format = m_schema->emplace_back();
        sio_8211MakeFieldFormat(format, field, entry.getTag(), hints);
        know(format);
    }
}

void sio_8211Reader::know(const sio_8211FieldFormat &format)
{
    KnownFormat &known = m_formats[format.getTag()];
    if (known.format != nullptr)
        return; // of several fields with one tag the first holds
    known.format = &format;
    known.tag = sc_Name(m_schema, format.getTag());
    known.name = sc_Name(m_schema, format.getName());
    known.labels.reserve(format.size());
    for (const sio_8211SubfieldFormat &subfield : format)
        known.labels.emplace_back(m_schema, subfield.getLabel());
    known.isAttribute = format.getTag() == "ATTP" || format.getTag() == "ATTS";
}

// Fills a field that `next` gives for each that the record holds, and tells `done`.
template <class NextField, class FieldDone>
sio_8211Cause sio_8211Reader::takeFields(const sio_8211DR &dr, NextField next,
                                         FieldDone done) const
{
    std::int64_t bytesLeft = bytesAllowed(dr);
    for (const sio_8211DirEntry &entry : dr.getDirectory()) {
        const auto known = m_formats.find(entry.getTag());
        if (known == m_formats.end() || entry.getField() == nullptr)
            continue;
        FieldFiller filler(known->second, *entry.getField());
        while (!filler.atEnd()) {
            bytesLeft -= filler.bytes();
            if (bytesLeft < 0)
                return sio_8211Cause::TooManyFields;
            sc_Field &field = next();
            const bool isReadable = filler.fill(field);
            done(field);
            if (!isReadable)
                return sio_8211Cause::Subfield;
        }
    }
    return sio_8211Cause::None;
}

sio_8211Cause sio_8211Reader::fillRecord(const sio_8211DR &dr, sc_Record &record) const
{
    std::size_t used = 0;
    const auto next = [&]() -> sc_Field & {
        ++used;
        return used <= record.size() ? record[used - 1] : record.emplace_back();
    };
    const sio_8211Cause cause = takeFields(dr, next, [](const sc_Field &) {});
    record.resize(used);
    return cause;
}

bool sio_8211Reader::_fillScRecord(std::int64_t position, sc_Record &record) const
{
    m_stream.seekg(position);
    sio_8211DR dr;
    m_stream >> dr;
    return m_stream.good() && _fillScRecord(dr, record);
}

sio_8211Cause sio_8211Reader::walkFields(const sio_8211DR &dr, std::ostream &out) const
{
    sc_Field field;
    return takeFields(
        dr, [&]() -> sc_Field & { return field; },
        [&](const sc_Field &filled) { out << filled << '\n'; });
}

} // namespace iso8211
