#include "iso8211/sio_8211leader.h"

#include "iso8211/sio_utils.h"

#include <istream>

namespace iso8211 {

using sio_Utils::getLong;

bool sio_8211Leader::readBytes(std::istream &stream, char (&bytes)[Size])
{
    stream.read(bytes, Size);
    if (stream.good())
        return true;
    stream.setstate(std::ios::failbit);
    return false;
}

void sio_8211Leader::takeCommonPart(const char (&bytes)[Size])
{
    m_recordLength = getLong(bytes, 0, 5);
    m_leaderIdentifier = bytes[6];
    m_baseAddrOfFieldArea = getLong(bytes, 12, 5);
    m_sizeOfFieldLengthField = getLong(bytes, 20, 1);
    m_sizeOfFieldPosField = getLong(bytes, 21, 1);
    m_sizeOfFieldTagField = getLong(bytes, 23, 1);
}

std::istream &sio_8211DDRLeader::streamExtract(std::istream &stream)
{
    char bytes[Size];
    if (!readBytes(stream, bytes))
        return stream;
    takeCommonPart(bytes);
    m_interchangeLevel = bytes[5];
    m_inlineCodeExtensionIndicator = bytes[7];
    m_versionNumber = bytes[8];
    m_appIndicator = bytes[9];
    m_fieldControlLength = getLong(bytes, 10, 2);
    return stream;
}

std::istream &sio_8211DRLeader::streamExtract(std::istream &stream)
{
    char bytes[Size];
    if (readBytes(stream, bytes))
        takeCommonPart(bytes);
    return stream;
}

std::istream &operator>>(std::istream &stream, sio_8211Leader &leader)
{
    return leader.streamExtract(stream);
}

} // namespace iso8211
