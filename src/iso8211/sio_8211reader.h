#pragma once

#include "iso8211/sc_record.h"
#include "iso8211/sio_8211converter.h"
#include "iso8211/sio_8211fieldformat.h"
#include "iso8211/sio_8211record.h"
#include "iso8211/sio_8211stop.h"

#include <cstdint>
#include <iosfwd>
#include <list>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace iso8211 {

/// Base of the readers of transfer files.
class sio_Reader {
public:
    virtual ~sio_Reader() = default;
};

/// Reads the description at the head of an open file once and makes typed records
/// of its data records. A file that cannot be read leaves the schema empty and the
/// stream failed.
///
/// Guarded against files that are not what they claim to be: the fields of a record may
/// not lie over each other, a field that consumes none of its bytes is read once, and
/// the fields made of a record take up no more memory than 1 MiB and, for each of its
/// bytes, that of two fields with a subfield.
class sio_8211Reader : public sio_Reader {
public:
    /// The stream and the converters of the hints are borrowed.
    explicit sio_8211Reader(std::istream &stream,
                            const sio_8211ConverterHints *hints = nullptr);

    /// One format for each field that the file describes.
    [[nodiscard]] const std::list<sio_8211FieldFormat> &getSchema() const
    {
        return *m_schema;
    }
    /// Why the description could not be read; None if it is there.
    [[nodiscard]] sio_8211Cause cause() const
    {
        return m_firstRecord < 0 ? sio_8211Cause::Description : sio_8211Cause::None;
    }
    [[nodiscard]] std::istream &stream() const { return m_stream; }
    [[nodiscard]] std::int64_t firstRecord() const { return m_firstRecord; }

    /// Fills the record with the typed subfields of a data record, over what it
    /// holds. False at a subfield that cannot be read; the record then ends there.
    bool _fillScRecord(const sio_8211DR &dr, sc_Record &record) const
    {
        return fillRecord(dr, record) == sio_8211Cause::None;
    }
    /// The same, and tells why it ended.
    sio_8211Cause fillRecord(const sio_8211DR &dr, sc_Record &record) const;
    /// The same for the data record at a stream position.
    bool _fillScRecord(std::int64_t position, sc_Record &record) const;
    /// Inserts the fields of a data record into a stream as the record that
    /// _fillScRecord() makes would be, but holds no more than one of them at a time.
    sio_8211Cause walkFields(const sio_8211DR &dr, std::ostream &out) const;

private:
    using Schema = std::list<sio_8211FieldFormat>;

    // A format of the schema, with its texts as all fields made by it share them.
    struct KnownFormat {
        const sio_8211FieldFormat *format = nullptr;
        sc_Name tag;
        sc_Name name;
        std::vector<sc_Name> labels; // of the subfields
        bool isAttribute = false;
    };
    class FieldFiller;

    void know(const sio_8211FieldFormat &format);
    template <class NextField, class FieldDone>
    sio_8211Cause takeFields(const sio_8211DR &dr, NextField next, FieldDone done) const;

    std::istream &m_stream;
    sio_8211DDR m_ddr;
    std::shared_ptr<Schema> m_schema = std::make_shared<Schema>();
    std::unordered_map<std::string_view, KnownFormat> m_formats; // by tag
    std::int64_t m_firstRecord = -1;
};

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211Reader;
using iso8211::sio_Reader;
