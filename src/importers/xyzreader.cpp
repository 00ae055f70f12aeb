#include "importers/xyzreader.h"

#include "base/memorybudget.h"

#include <QIODevice>
#include <QObject>
#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <new>

namespace {

constexpr qsizetype ChunkSize = 1 << 16;

// The white space of a regular expression, which is that of ASCII.
constexpr bool isSpace(unsigned c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isDigitOrPoint(char c) { return (c >= '0' && c <= '9') || c == '.'; }

// Below this, rounding is left to the toolkit's own reading.
constexpr double Tiny = 1e-300;

constexpr bool isAscii(char c) { return (c & 0x80) == 0; }

// Splits into up to three items; false where the slow way is needed: for what is
// not ASCII, and for carriage returns amid the line, which are not white space
// but nothing at all.
bool splitQuickly(std::string_view text, XyzReader::Line &line)
{
    double *const values[] = {&line.x, &line.y, &line.z};
    const char *p = text.data();
    const char *const end = p + text.size();
    for (double *value : values) {
        const char *const item = p;
        while (p != end && !isSpace(static_cast<unsigned char>(*p))) {
            if (!isAscii(*p))
                return false;
            ++p;
        }
        if (p != end && *p == '\r')
            return false;
        *value = numberOf({item, std::size_t(p - item)});
        ++line.items;
        if (p == end)
            return true;
        while (p != end && isSpace(static_cast<unsigned char>(*p))) {
            if (*p == '\r')
                return false;
            ++p;
        }
    }
    return true;
}

void splitSlowly(QStringView text, XyzReader::Line &line)
{
    double *const values[] = {&line.x, &line.y, &line.z};
    qsizetype p = 0;
    for (double *value : values) {
        const qsizetype item = p;
        while (p < text.size() && !isSpace(text[p].unicode()))
            ++p;
        *value = text.mid(item, p - item).toDouble();
        ++line.items;
        if (p == text.size())
            return;
        while (p < text.size() && isSpace(text[p].unicode()))
            ++p;
    }
}

} // namespace

double numberOf(std::string_view text)
{
    const char *p = text.data();
    const char *const end = p + text.size();
    if (p != end && *p == '+')
        ++p;
    const char *const first = p != end && *p == '-' && p == text.data() ? p + 1 : p;
    // Words and odd forms are the toolkit's matter; so is what leaves the range.
    if (first != end && isDigitOrPoint(*first)) {
        double value = 0.0;
        const auto [stop, error] = std::from_chars(p, end, value);
        if (error == std::errc() && stop == end &&
            (value == 0.0 || std::fabs(value) > Tiny))
            return value;
    }
    if (text.empty())
        return 0.0;
    return QString::fromLatin1(text.data(), qsizetype(text.size())).toDouble();
}

XyzReader::XyzReader(QIODevice &device)
    : m_device(device), m_buffer(ChunkSize), m_chunk(ChunkSize)
{
    m_device.setTextModeEnabled(false);
}

bool XyzReader::atEnd() { return !findLine(); }

void XyzReader::skipLine()
{
    if (!findLine())
        return;
    m_begin = m_lineEnd + (m_terminated ? 1 : 0);
    m_searched = m_begin;
    m_lineEnd = -1;
    m_anyLine = true;
}

XyzReader::Line XyzReader::readLine()
{
    Line line;
    if (!findLine())
        return line;
    std::string_view text(m_buffer.data() + m_begin, std::size_t(m_lineEnd - m_begin));
    while (!text.empty() && text.back() == '\r')
        text.remove_suffix(1);
    if (!text.empty()) {
        line.empty = false;
        if (!splitQuickly(text, line)) {
            line = {};
            const QString unicode = decoded();
            line.empty = unicode.isEmpty();
            if (!line.empty)
                splitSlowly(unicode, line);
        }
    }
    skipLine();
    return line;
}

// Finds the end of the line that begins at m_begin.
bool XyzReader::findLine()
{
    while (m_lineEnd < 0) {
        const void *const feed = std::memchr(m_buffer.data() + m_searched, '\n',
                                             std::size_t(m_end - m_searched));
        m_searched = m_end;
        if (feed) {
            m_lineEnd = static_cast<const char *>(feed) - m_buffer.data();
            m_terminated = true;
        } else if (!fill()) {
            // A file that is not empty has a line, were it a mark alone.
            if (restIsNothing() && (m_anyLine || !m_started))
                return false;
            m_lineEnd = m_end;
            m_terminated = false;
        }
    }
    return true;
}

// What decodes to nothing is no last line. Mostly the first byte tells.
bool XyzReader::restIsNothing() const
{
    const auto visible = [](char c) { return isAscii(c) && c != '\r'; };
    const char *const bytes = m_buffer.data();
    return std::none_of(bytes + m_begin, bytes + m_end, visible) && decoded().isEmpty();
}

// False at the end of the device.
bool XyzReader::fill()
{
    if (m_exhausted)
        return false;
    const qint64 count = m_device.read(m_chunk.data(), ChunkSize);
    if (count <= 0) {
        m_exhausted = true;
        return false;
    }
    const std::string_view bytes(m_chunk.data(), std::size_t(count));
    if (!m_started) {
        m_started = true;
        removeMark(bytes);
    } else if (m_decoder.isValid()) {
        const QString text = m_decoder(QByteArrayView(bytes.data(), count));
        const QByteArray utf8 = text.toUtf8();
        append({utf8.constData(), std::size_t(utf8.size())});
    } else {
        append(bytes);
    }
    return true;
}

// The first bytes tell the encoding.
void XyzReader::removeMark(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), qsizetype(bytes.size()));
    const auto encoding = QStringConverter::encodingForData(view);
    constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
    if (encoding && *encoding != QStringConverter::Utf8) {
        m_decoder = QStringDecoder(*encoding);
        const QString text = m_decoder(view);
        const QByteArray utf8 = text.toUtf8();
        append({utf8.constData(), std::size_t(utf8.size())});
        return;
    }
    if (bytes.substr(0, Utf8Mark.size()) == Utf8Mark)
        bytes.remove_prefix(Utf8Mark.size());
    append(bytes);
}

void XyzReader::append(std::string_view bytes)
{
    const qsizetype rest = m_end - m_begin;
    const qsizetype needed = rest + qsizetype(bytes.size());
    if (m_begin > 0 && rest > 0)
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, std::size_t(rest));
    m_searched -= m_begin;
    m_begin = 0;
    if (needed > qsizetype(m_buffer.size()))
        grow(std::max(needed, 2 * rest));
    std::memcpy(m_buffer.data() + rest, bytes.data(), bytes.size());
    m_end = needed;
}

// A file without line ends, or a device that never ends, is one line. Memory that is
// only promised would end the program, so it is given up before.
void XyzReader::grow(qsizetype size)
{
    const qint64 both = qint64(size) + qint64(m_buffer.size()); // while it is copied
    if (!claimMemory(QObject::tr("A line of the text file"), both))
        throw std::bad_alloc();
    m_buffer.resize(std::size_t(size));
}

// The line as text, from where it began to the line feed or the end.
QString XyzReader::decoded() const
{
    const bool terminated = m_lineEnd >= 0 && m_terminated;
    const qsizetype end = m_lineEnd < 0 ? m_end : m_lineEnd + (terminated ? 1 : 0);
    // A mark amid the text is a character. Stateful, so that an incomplete
    // character at the end of the file is dropped.
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder(QByteArrayView(m_buffer.data() + m_begin, end - m_begin));
    if (terminated)
        text.chop(1);
    text.remove(QLatin1Char('\r'));
    return text;
}
