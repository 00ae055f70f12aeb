#pragma once

#include "iso8211/sio_8211record.h"
#include "iso8211/sio_8211stop.h"

#include <cstdint>

namespace iso8211 {

class sc_Record;
class sio_8211Reader;

/// Steps through the records of a file, forward only.
class sio_ForwardIterator {
public:
    virtual ~sio_ForwardIterator() = default;
    /// Fills the record with the current one; false, with failbit set, if it cannot
    /// be read to its end.
    virtual bool get(sc_Record &record) = 0;
    virtual void operator++() = 0;
    [[nodiscard]] virtual bool done() const = 0;
    /// Not null while not done.
    virtual operator void *() const = 0;
};

/// Steps through the data records. A record that cannot be read counts as the end
/// of the file.
class sio_8211ForwardIterator : public sio_ForwardIterator {
public:
    /// The reader is borrowed.
    explicit sio_8211ForwardIterator(sio_8211Reader &reader);
    sio_8211ForwardIterator(const sio_8211ForwardIterator &) = delete;
    sio_8211ForwardIterator &operator=(const sio_8211ForwardIterator &) = delete;

    bool get(sc_Record &record) override;
    /// Inserts the current record into a stream as get() and the insertion of what it
    /// fills would, whatever its size in no more memory than its bytes and one field.
    bool walk(std::ostream &out);
    void operator++() override;
    [[nodiscard]] bool done() const override { return m_done; }
    operator void *() const override;
    /// Where and why the reading ended before the end of the file; without a cause
    /// while it goes on and where the file was read to its end.
    [[nodiscard]] const sio_8211Stop &stop() const { return m_stop; }

private:
    void readRecord();
    bool endAt(sio_8211Cause cause);
    /// Reads into m_record; why that failed.
    sio_8211Cause readNext();

    std::int64_t m_nextRecord;
    sio_8211DR m_record;
    sio_8211Reader *m_reader;
    std::int64_t m_number = 0; // of the current record, from 1
    sio_8211Stop m_stop;
    bool m_done = false;
};

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211ForwardIterator;
using iso8211::sio_ForwardIterator;
