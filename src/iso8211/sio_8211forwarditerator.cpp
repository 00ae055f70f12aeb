#include "iso8211/sio_8211forwarditerator.h"

#include "iso8211/sc_record.h"
#include "iso8211/sio_8211reader.h"
#include "iso8211/sio_utils.h"

#include <istream>

sio_8211ForwardIterator::sio_8211ForwardIterator(sio_8211Reader &reader)
    : m_nextRecord(reader.firstRecord()), m_reader(&reader)
{
    readRecord();
}

bool sio_8211ForwardIterator::get(sc_Record &record)
{
    return endUnless(m_reader->_fillScRecord(m_record, record));
}

bool sio_8211ForwardIterator::walk(std::ostream &out)
{
    const bool isReadable = m_reader->walkFields(m_record, out);
    out << '\n';
    return endUnless(isReadable);
}

// A record that cannot be read to its end is the last: that is what the stream tells.
bool sio_8211ForwardIterator::endUnless(bool isReadable)
{
    if (!isReadable)
        m_reader->stream().setstate(std::ios::failbit);
    return isReadable;
}

void sio_8211ForwardIterator::operator++() { readRecord(); }

sio_8211ForwardIterator::operator void *() const
{
    return m_done ? nullptr : const_cast<sio_8211ForwardIterator *>(this);
}

void sio_8211ForwardIterator::readRecord()
{
    std::istream &stream = m_reader->stream();
    if (!m_done && !stream.fail()) {
        sio_Utils::seekTo(stream, m_nextRecord);
        stream.peek();
    }
    if (m_done || !stream.good()) {
        m_done = true;
        return;
    }
    const std::int64_t start = m_nextRecord;
    stream >> m_record;
    m_nextRecord = stream.tellg();
    if (!stream.good() || m_nextRecord <= start) {
        // Without a byte consumed the same record would come again for ever.
        stream.setstate(std::ios::failbit);
        m_done = true;
        return;
    }
    // A file whose fields go backwards has no next record: it would be read from
    // the midst of this one, again and again.
    if (m_nextRecord < m_record.endOfFields())
        m_nextRecord = -1;
    if (!m_record.isReusingLeaderAndDirectory() &&
        m_record.getLeader().getLeaderIdentifier() == 'R')
        m_record.reuseLeaderAndDirectory(true);
}
