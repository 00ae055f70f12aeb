#include "iso8211/sio_8211record.h"

#include "iso8211/sio_utils.h"

#include <algorithm>
#include <istream>
#include <limits>

namespace iso8211 {

void sio_8211Record::readFields(std::istream &stream, std::int64_t base)
{
    m_fieldArea.clear();
    m_endOfFields = base;
    for (sio_8211DirEntry &entry : m_directory)
        entry.setField(nullptr);
    std::int64_t total = 0;
    // Where the stream stands; not known at first.
    std::int64_t here = std::numeric_limits<std::int64_t>::min();
    for (sio_8211DirEntry &entry : m_directory) {
        const std::int64_t start = base + entry.getPosition();
        const std::int64_t end = start + entry.getFieldLength();
        const std::int64_t furthest = std::max(m_endOfFields, end);
        total += entry.getFieldLength();
        // Fields that together hold more than the stretch they cover lie over each
        // other; a few bytes could then stand for any amount of memory.
        if (entry.getPosition() < 0 || entry.getFieldLength() < 1 ||
            total > furthest - base) {
            stream.setstate(std::ios::failbit);
            return;
        }
        if (start != here)
            sio_Utils::seekTo(stream, start);
        m_fieldArea.emplace_back(entry.getFieldLength() - 1);
        stream >> m_fieldArea.back();
        if (!stream.good())
            return;
        entry.setField(&m_fieldArea.back());
        here = end;
        m_endOfFields = furthest;
    }
}

std::istream &sio_8211DDR::streamExtract(std::istream &stream)
{
    stream >> m_leader;
    if (stream.good())
        stream >> directory();
    if (stream.good())
        readFields(stream, m_leader.getBaseAddrOfFieldArea());
    return stream;
}

std::istream &sio_8211DR::streamExtract(std::istream &stream)
{
    if (!stream.good())
        return stream;
    if (!m_reusingLeaderAndDirectory) {
        stream >> m_leader;
        if (stream.good())
            stream >> directory();
        if (!stream.good())
            return stream;
    }
    readFields(stream, stream.tellg());
    return stream;
}

std::istream &operator>>(std::istream &stream, sio_8211Record &record)
{
    return record.streamExtract(stream);
}

} // namespace iso8211
