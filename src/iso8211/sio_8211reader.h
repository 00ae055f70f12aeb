#pragma once

#include "iso8211/sc_record.h"
#include "iso8211/sio_8211converter.h"
#include "iso8211/sio_8211fieldformat.h"
#include "iso8211/sio_8211record.h"

#include <cstdint>
#include <iosfwd>
#include <list>

/// Base of the readers of transfer files.
class sio_Reader {
public:
    virtual ~sio_Reader() = default;
};

/// Reads the description at the head of an open file once and makes typed records
/// of its data records. A file that cannot be read leaves the schema empty and the
/// stream failed.
class sio_8211Reader : public sio_Reader {
public:
    /// The stream and the converters of the hints are borrowed.
    explicit sio_8211Reader(std::istream &stream,
                            const sio_8211ConverterHints *hints = nullptr);

    /// One format for each field that the file describes.
    [[nodiscard]] const std::list<sio_8211FieldFormat> &getSchema() const
    {
        return m_schema;
    }
    [[nodiscard]] std::istream &stream() const { return m_stream; }
    [[nodiscard]] std::int64_t firstRecord() const { return m_firstRecord; }

    /// Fills the record with the typed subfields of a data record, over what it
    /// holds. False at a subfield that cannot be read; the record then ends there.
    bool _fillScRecord(const sio_8211DR &dr, sc_Record &record) const;
    /// The same for the data record at a stream position.
    bool _fillScRecord(std::int64_t position, sc_Record &record) const;

private:
    std::istream &m_stream;
    sio_8211DDR m_ddr;
    std::list<sio_8211FieldFormat> m_schema;
    std::int64_t m_firstRecord = -1;
};
