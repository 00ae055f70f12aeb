#include "iso8211/sio_8211field.h"

#include "iso8211/sio_8211terminators.h"

#include <algorithm>
#include <cstring>
#include <istream>

namespace iso8211 {

std::istream &sio_8211Field::streamExtract(std::istream &stream)
{
    m_data.clear();
    // The length is only a claim: memory is taken as bytes arrive.
    constexpr std::size_t Step = 65536;
    const auto wanted = static_cast<std::size_t>(std::max(m_length, 0));
    if (m_length < 0)
        stream.setstate(std::ios::failbit);
    while (stream.good() && m_data.size() < wanted) {
        const std::size_t had = m_data.size();
        m_data.resize(had + std::min(Step, wanted - had));
        stream.read(m_data.data() + had, std::streamsize(m_data.size() - had));
        m_data.resize(had + std::size_t(stream.gcount()));
    }
    if (!stream.good() || stream.get() != FieldTerminator)
        stream.setstate(std::ios::failbit);
    m_length = static_cast<std::int32_t>(m_data.size());
    return stream;
}

bool sio_8211Field::getVariableSubfield(std::string &dest, std::int32_t &offset,
                                        char terminator, std::size_t limit) const
{
    if (offset < 0 || offset >= m_length)
        return false;
    const char *const start = m_data.data() + offset;
    const auto rest = static_cast<std::size_t>(m_length - offset);
    const auto *const end = static_cast<const char *>(memchr(start, terminator, rest));
    const std::size_t length = end != nullptr ? std::size_t(end - start) : rest;
    dest.assign(start, std::min(length, limit));
    dest.resize(std::min(dest.size(), dest.find('\0')));
    offset += end != nullptr ? static_cast<std::int32_t>(length) + 1 : m_length;
    return true;
}

std::istream &operator>>(std::istream &stream, sio_8211Field &field)
{
    return field.streamExtract(stream);
}

} // namespace iso8211
