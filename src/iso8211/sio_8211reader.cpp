#include "iso8211/sio_8211reader.h"

#include "iso8211/sio_8211ddrfield.h"

#include <algorithm>
#include <istream>

namespace {

// Subfields that take up no bytes could make any number of records out of a few
// bytes. No sound record holds more subfields than this allowance and its bytes.
constexpr std::int64_t EmptySubfieldsAllowed = 4096;
constexpr std::int64_t SubfieldsPerByte = 2;

// Fills one record, whose fields and subfields are overwritten where it has them.
class RecordFiller {
public:
    RecordFiller(sc_Record &record, std::int64_t subfieldsAllowed)
        : m_record(record), m_subfieldsLeft(subfieldsAllowed)
    {
    }

    // Takes a field as often as its bytes last; false if it cannot be read.
    bool fill(const sio_8211FieldFormat &format, const sio_8211Field &field)
    {
        std::int32_t offset = 0;
        while (true) {
            const std::int32_t start = offset;
            if (!fillOnce(format, field, offset))
                return false;
            // What consumes nothing would never come to the end.
            if (offset >= field.getDataLength() || offset == start)
                return true;
        }
    }

    void eraseSurplus() { m_record.resize(m_fieldsUsed); }

private:
    bool fillOnce(const sio_8211FieldFormat &format, const sio_8211Field &field,
                  std::int32_t &offset)
    {
        m_subfieldsLeft -= static_cast<std::int64_t>(format.size());
        if (m_subfieldsLeft < 0)
            return false;
        sc_Field &out = nextField();
        out.setMnemonic(format.getTag());
        out.setName(format.getName());
        // The fields of attributes name their subfields, all others abbreviate them.
        const bool isAttribute = format.getTag() == "ATTP" || format.getTag() == "ATTS";
        std::size_t used = 0;
        bool isReadable = true;
        for (const sio_8211SubfieldFormat &subfieldFormat : format) {
            sc_Subfield &subfield = used < out.size() ? out[used] : out.emplace_back();
            ++used;
            subfield.setName(isAttribute ? subfieldFormat.getLabel() : std::string());
            subfield.setMnemonic(isAttribute ? std::string() : subfieldFormat.getLabel());
            subfield.setUnvalued();
            isReadable = convert(subfieldFormat, field, subfield, offset);
            if (!isReadable)
                break;
        }
        out.resize(used);
        return isReadable;
    }

    static bool convert(const sio_8211SubfieldFormat &format, const sio_8211Field &field,
                        sc_Subfield &subfield, std::int32_t &offset)
    {
        const sio_8211Converter *const converter = format.getConverter();
        if (converter == nullptr)
            return false;
        const std::int32_t rest = std::max(field.getDataLength() - offset, 0);
        const char *const data =
            field.getData() + std::min(offset, field.getDataLength());
        if (format.getFormat() == sio_8211SubfieldFormat::variable) {
            offset +=
                converter->makeVarSubfield(&subfield, data, rest, format.getDelimiter()) +
                1;
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

    sc_Field &nextField()
    {
        ++m_fieldsUsed;
        return m_fieldsUsed <= m_record.size() ? m_record[m_fieldsUsed - 1]
                                               : m_record.emplace_back();
    }

    sc_Record &m_record;
    std::size_t m_fieldsUsed = 0;
    std::int64_t m_subfieldsLeft;
};

std::int64_t subfieldsAllowed(const sio_8211DR &dr)
{
    std::int64_t bytes =
        std::int64_t(dr.getDirectory().size()) * sio_8211DirEntry::sizeOf(dr.getLeader());
    for (const sio_8211Field &field : dr.getFieldArea())
        bytes += field.getDataLength() + 1;
    return EmptySubfieldsAllowed + SubfieldsPerByte * bytes;
}

} // namespace

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
        sio_8211MakeFieldFormat(m_schema.emplace_back(), field, entry.getTag(), hints);
    }
}

bool sio_8211Reader::_fillScRecord(const sio_8211DR &dr, sc_Record &record) const
{
    RecordFiller filler(record, subfieldsAllowed(dr));
    bool isReadable = true;
    for (const sio_8211DirEntry &entry : dr.getDirectory()) {
        const auto format = std::find_if(
            m_schema.begin(), m_schema.end(),
            [&entry](const sio_8211FieldFormat &f) { return f == entry.getTag(); });
        if (format == m_schema.end() || entry.getField() == nullptr)
            continue;
        isReadable = filler.fill(*format, *entry.getField());
        if (!isReadable)
            break;
    }
    filler.eraseSurplus();
    return isReadable;
}

bool sio_8211Reader::_fillScRecord(std::int64_t position, sc_Record &record) const
{
    m_stream.seekg(position);
    sio_8211DR dr;
    m_stream >> dr;
    return m_stream.good() && _fillScRecord(dr, record);
}
