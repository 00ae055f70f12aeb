#include "importers/usgsdemreader.h"

#include "importers/numbers.h"

#include <QIODevice>

#include <array>

namespace {

constexpr int BufferSize = 65536;

bool isDigit(int c) { return c >= '0' && c <= '9'; }
bool isBlank(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool startsNumber(int c) { return isDigit(c) || c == '-' || c == '.' || c == 0xFF; }

// The characters of one number; those that do not fit are dropped.
class Digits {
public:
    void append(int c)
    {
        if (m_length < m_text.size())
            m_text[m_length++] = static_cast<char>(c);
    }
    [[nodiscard]] double value() const
    {
        return leadingNumber({m_text.data(), static_cast<qsizetype>(m_length)});
    }

private:
    std::array<char, 256> m_text;
    std::size_t m_length = 0;
};

} // namespace

UsgsDemReader::UsgsDemReader(QIODevice &in) : m_in(in), m_buffer(BufferSize, '\0') {}

bool UsgsDemReader::fill()
{
    const qint64 count = m_in.read(m_buffer.data(), BufferSize);
    m_position = reinterpret_cast<const uchar *>(m_buffer.constData());
    m_filled = m_position + qMax(count, qint64(0));
    return count > 0;
}

double UsgsDemReader::ReadNumber()
{
    int c = next();
    while (c != EndOfFile && !startsNumber(c))
        c = next();
    if (c == EndOfFile) {
        m_exhausted = true;
        return 0.0;
    }
    const bool negative = c == '-';
    if (negative)
        c = next();
    Digits digits;
    for (; isDigit(c) || c == '.'; c = next())
        digits.append(c);
    const double value = digits.value();
    return negative ? -value : value;
}

void UsgsDemReader::skipBlanks()
{
    while (isBlank(peek()))
        next();
}

int UsgsDemReader::readInteger()
{
    skipBlanks();
    const bool negative = peek() == '-';
    if (negative || peek() == '+')
        next();
    quint32 value = 0; // wraps instead of overflowing
    while (isDigit(peek()))
        value = value * 10u + static_cast<quint32>(next() - '0');
    return static_cast<qint32>(negative ? 0u - value : value);
}

double UsgsDemReader::readReal()
{
    skipBlanks();
    Digits text;
    for (int c = peek(); c != EndOfFile && !isBlank(c); c = peek())
        text.append(next());
    return text.value();
}
