#include "iso8211/sio_8211forwarditerator.h"

#include "iso8211/sc_record.h"
#include "iso8211/sio_8211reader.h"
#include "iso8211/sio_utils.h"

#include <istream>

namespace iso8211 {

sio_8211ForwardIterator::sio_8211ForwardIterator(sio_8211Reader &reader)
    : m_nextRecord(reader.firstRecord()), m_reader(&reader), m_stop{0, reader.cause()}
{
    readRecord();
}

bool sio_8211ForwardIterator::get(sc_Record &record)
{
    return endAt(m_reader->fillRecord(m_record, record));
}

bool sio_8211ForwardIterator::walk(std::ostream &out)
{
    const sio_8211Cause cause = m_reader->walkFields(m_record, out);
    out << '\n';
    return endAt(cause);
}

// A record that cannot be read to its end is the last: that is what the stream tells.
bool sio_8211ForwardIterator::endAt(sio_8211Cause cause)
{
    if (cause == sio_8211Cause::None)
        return true;
    m_stop = {m_number, cause};
    m_reader->stream().setstate(std::ios::failbit);
    return false;
}

void sio_8211ForwardIterator::operator++() { readRecord(); }

sio_8211ForwardIterator::operator void *() const
{
    return m_done ? nullptr : const_cast<sio_8211ForwardIterator *>(this);
}

sio_8211Cause sio_8211ForwardIterator::readNext()
{
    std::istream &stream = m_reader->stream();
    const std::int64_t start = m_nextRecord;
    stream >> m_record;
    m_nextRecord = stream.tellg();
    if (!stream.good())
        return sio_8211Cause::Record;
    return m_nextRecord <= start ? sio_8211Cause::NoProgress : sio_8211Cause::None;
}

void sio_8211ForwardIterator::readRecord()
{
    std::istream &stream = m_reader->stream();
    if (!m_done && !stream.fail()) {
        if (m_nextRecord < 0)
            m_stop = {m_number, sio_8211Cause::Backwards};
        sio_Utils::seekTo(stream, m_nextRecord);
        stream.peek();
    }
    if (m_done || !stream.good()) {
        m_done = true;
        return;
    }
    ++m_number;
    m_done = !endAt(readNext());
    if (m_done)
        return;
    // A file whose fields go backwards has no next record: it would be read from
    // the midst of this one, again and again.
    if (m_nextRecord < m_record.endOfFields())
        m_nextRecord = -1;
    if (!m_record.isReusingLeaderAndDirectory() &&
        m_record.getLeader().getLeaderIdentifier() == 'R')
        m_record.reuseLeaderAndDirectory(true);
}

} // namespace iso8211
