#include "iso8211/sio_8211directory.h"

#include "iso8211/sio_8211leader.h"
#include "iso8211/sio_8211terminators.h"
#include "iso8211/sio_utils.h"

#include <istream>

namespace iso8211 {

namespace {

// The leader gives the end of a directory in five digits.
constexpr std::int32_t LongestDirectory = 99999;
// Three widths of one digit each.
constexpr std::int32_t LongestEntry = 27;

} // namespace

std::int32_t sio_8211DirEntry::sizeOf(const sio_8211Leader &leader)
{
    return leader.getSizeOfFieldTagField() + leader.getSizeOfFieldLengthField() +
           leader.getSizeOfFieldPosField();
}

std::istream &sio_8211DirEntry::streamExtract(std::istream &stream)
{
    const std::int32_t size = sizeOf(*m_leader);
    char bytes[LongestEntry] = {};
    // An entry of no bytes would be read for ever.
    if (size < 1 || size > LongestEntry || !stream.read(bytes, size)) {
        stream.setstate(std::ios::failbit);
        return stream;
    }
    const std::int32_t tagSize = m_leader->getSizeOfFieldTagField();
    const std::int32_t lengthSize = m_leader->getSizeOfFieldLengthField();
    m_tag = sio_Utils::getString(bytes, 0, tagSize);
    m_fieldLength = sio_Utils::getLong(bytes, tagSize, lengthSize);
    m_position = sio_Utils::getLong(bytes, tagSize + lengthSize,
                                    m_leader->getSizeOfFieldPosField());
    return stream;
}

std::istream &sio_8211Directory::streamExtract(std::istream &stream)
{
    clear();
    std::int32_t bytes = 0;
    while (stream.good() && stream.peek() != FieldTerminator && stream.good()) {
        bytes += sio_8211DirEntry::sizeOf(*m_leader);
        if (bytes > LongestDirectory) {
            stream.setstate(std::ios::failbit);
            break;
        }
        emplace_back(m_leader);
        stream >> back();
    }
    if (stream.good())
        stream.get();
    else
        stream.setstate(std::ios::failbit); // the file ended before the directory did
    return stream;
}

std::istream &operator>>(std::istream &stream, sio_8211DirEntry &entry)
{
    return entry.streamExtract(stream);
}

std::istream &operator>>(std::istream &stream, sio_8211Directory &directory)
{
    return directory.streamExtract(stream);
}

} // namespace iso8211
