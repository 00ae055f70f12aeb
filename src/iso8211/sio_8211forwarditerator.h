#pragma once

#include "iso8211/sio_8211record.h"

#include <cstdint>

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

private:
    void readRecord();
    bool endUnless(bool isReadable);

    std::int64_t m_nextRecord;
    sio_8211DR m_record;
    sio_8211Reader *m_reader;
    bool m_done = false;
};
