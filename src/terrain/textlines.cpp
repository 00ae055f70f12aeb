#include "terrain/textlines.h"

#include <QIODevice>

#include <cstring>

namespace {

constexpr std::size_t ChunkSize = 1 << 16;
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

QByteArrayView viewOf(std::string_view bytes)
{
    return {bytes.data(), qsizetype(bytes.size())};
}

} // namespace

TextLines::TextLines(QIODevice &device)
    : m_device(device), m_chunk(ChunkSize), m_buffer(2 * ChunkSize)
{
    m_device.setTextModeEnabled(false);
}

std::optional<std::string_view> TextLines::next()
{
    while (!m_isTooLong) {
        const char *const from = m_buffer.data() + m_searched;
        const void *const end = std::memchr(from, m_lineEnd, m_end - m_searched);
        if (end != nullptr) {
            const auto at = std::size_t(static_cast<const char *>(end) - m_buffer.data());
            return take(at - m_begin, at + 1);
        }
        m_searched = m_end;
        if (m_end - m_begin > LongestLine)
            m_isTooLong = true;
        else if (!fill())
            break;
    }
    if (m_isTooLong || m_begin == m_end)
        return {};
    return take(m_end - m_begin, m_end);
}

std::string_view TextLines::take(std::size_t length, std::size_t end)
{
    std::string_view line(m_buffer.data() + m_begin, length);
    while (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    m_begin = m_searched = end;
    ++m_number;
    return line;
}

bool TextLines::fill()
{
    const qint64 count = m_device.read(m_chunk.data(), qint64(m_chunk.size()));
    if (count <= 0)
        return false;
    m_bytesRead += count;
    const std::string_view bytes(m_chunk.data(), std::size_t(count));
    if (!m_hasBegun) {
        begin(bytes);
    } else if (m_decoder.isValid()) {
        const QString decoded = m_decoder(viewOf(bytes));
        const QByteArray text = decoded.toUtf8();
        append({text.constData(), std::size_t(text.size())});
    } else {
        append(bytes);
    }
    return true;
}

// The first bytes tell the encoding and how lines end.
void TextLines::begin(std::string_view bytes)
{
    m_hasBegun = true;
    const auto encoding = QStringConverter::encodingForData(viewOf(bytes));
    if (encoding && *encoding != QStringConverter::Utf8) {
        m_decoder = QStringDecoder(*encoding);
        const QString decoded = m_decoder(viewOf(bytes));
        const QByteArray text = decoded.toUtf8();
        append({text.constData(), std::size_t(text.size())});
    } else {
        if (bytes.substr(0, Utf8Mark.size()) == Utf8Mark)
            bytes.remove_prefix(Utf8Mark.size());
        append(bytes);
    }
    const std::string_view text(m_buffer.data(), m_end);
    const bool hasFeed = text.find('\n') != std::string_view::npos;
    if (!hasFeed && text.find('\r') < text.size() - 1)
        m_lineEnd = '\r';
}

void TextLines::append(std::string_view bytes)
{
    const std::size_t rest = m_end - m_begin;
    if (rest > 0 && m_begin > 0)
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, rest);
    m_searched -= m_begin;
    m_begin = 0;
    if (rest + bytes.size() > m_buffer.size())
        m_buffer.resize(2 * (rest + bytes.size()));
    if (!bytes.empty())
        std::memcpy(m_buffer.data() + rest, bytes.data(), bytes.size());
    m_end = rest + bytes.size();
}
