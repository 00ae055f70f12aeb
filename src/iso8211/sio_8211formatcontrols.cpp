#include "iso8211/sio_8211formatcontrols.h"

#include "iso8211/sio_utils.h"

#include <algorithm>

namespace iso8211 {

namespace {

enum class Token { Integer, Type, Open, Close, Comma, Delimiter, End };

// The text as tokens, one of which is looked at a time.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_text(text) { advance(); }

    [[nodiscard]] Token token() const { return m_token; }
    [[nodiscard]] std::int32_t number() const { return m_number; }
    [[nodiscard]] char character() const { return m_character; }

    void advance()
    {
        if (m_position == m_text.size()) {
            m_token = Token::End;
            return;
        }
        m_character = m_text[m_position];
        m_token = tokenOf(m_character);
        if (m_token == Token::Integer)
            takeDigits();
        else if (m_token != Token::End)
            ++m_position;
    }

    // Steps over a token of this kind; false, and stays, at another.
    bool accept(Token expected)
    {
        if (m_token != expected)
            return false;
        advance();
        return true;
    }

private:
    static Token tokenOf(char c)
    {
        if (c >= '0' && c <= '9')
            return Token::Integer;
        switch (c) {
        case '(':
            return Token::Open;
        case ')':
            return Token::Close;
        case ',':
            return Token::Comma;
        case 0x0A:
        case FieldTerminator:
        case UnitTerminator:
            return Token::End;
        default:
            return std::string_view("ABCIRSXabcirsx").find(c) != std::string_view::npos
                       ? Token::Type
                       : Token::Delimiter;
        }
    }

    void takeDigits()
    {
        const std::size_t end =
            std::min(m_text.find_first_not_of("0123456789", m_position), m_text.size());
        m_number = sio_Utils::longOf(m_text.substr(m_position, end - m_position));
        m_position = end;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
    Token m_token = Token::End;
    char m_character = 0;
    std::int32_t m_number = 0;
};

class Parser {
public:
    Parser(std::string_view text, std::span<sio_8211SubfieldFormat> subfields,
           const sio_8211ConverterHints *hints)
        : m_scanner(text), m_subfields(subfields), m_hints(hints)
    {
    }

    bool controls()
    {
        if (!m_scanner.accept(Token::Open))
            return false;
        const bool isDouble = m_scanner.accept(Token::Open);
        return list() && m_scanner.accept(Token::Close) &&
               (!isDouble || m_scanner.accept(Token::Close)) &&
               m_scanner.token() == Token::End;
    }

private:
    bool list()
    {
        do {
            if (!item())
                return false;
        } while (m_scanner.accept(Token::Comma));
        return true;
    }

    // Groups are counted, not recursed into: a text may nest them at any depth.
    bool item()
    {
        std::size_t depth = 0;
        std::int32_t count = 1;
        while (m_scanner.token() == Token::Integer) {
            count = m_scanner.number();
            m_scanner.advance();
            if (!m_scanner.accept(Token::Open))
                break;
            count = 1; // the count of a group takes no effect
            ++depth;
        }
        if (!spec())
            return false;
        repeat(count);
        for (; depth > 0; --depth)
            if (!m_scanner.accept(Token::Close))
                return false;
        return true;
    }

    bool spec()
    {
        if (m_scanner.token() != Token::Type)
            return false;
        const char letter = m_scanner.character();
        m_scanner.advance();
        if (m_scanner.accept(Token::Open) && !width())
            return false;
        if (!atEnd()) {
            setType(letter, current());
            setConverter(current(), m_hints);
        }
        return true;
    }

    bool width()
    {
        const Token kind = m_scanner.token();
        const char delimiter = m_scanner.character();
        if (kind != Token::Integer && kind != Token::Comma && kind != Token::Delimiter)
            return false;
        m_scanner.advance();
        if (!m_scanner.accept(Token::Close))
            return false;
        if (atEnd())
            return true;
        if (kind == Token::Integer)
            current().setLength(m_scanner.number());
        else
            current().setDelimiter(delimiter);
        return true;
    }

    // Steps past the subfield just set; each further repetition sets one like it.
    void repeat(std::int32_t count)
    {
        if (atEnd())
            return;
        const sio_8211SubfieldFormat &first = current();
        ++m_position;
        for (std::int32_t i = 1; i < count && !atEnd(); ++i, ++m_position) {
            current().setType(first.getType());
            if (first.getFormat() == sio_8211SubfieldFormat::fixed)
                current().setLength(first.getLength());
            else
                current().setDelimiter(first.getDelimiter());
            setConverter(current(), m_hints);
        }
    }

    [[nodiscard]] bool atEnd() const { return m_position == m_subfields.size(); }
    [[nodiscard]] sio_8211SubfieldFormat &current() { return m_subfields[m_position]; }

    Scanner m_scanner;
    std::span<sio_8211SubfieldFormat> m_subfields;
    const sio_8211ConverterHints *m_hints;
    std::size_t m_position = 0;
};

} // namespace

bool sio_8211ParseFormatControls(std::string_view text,
                                 std::span<sio_8211SubfieldFormat> subfields,
                                 const sio_8211ConverterHints *hints)
{
    if (Parser(text, subfields, hints).controls())
        return true;
    std::perror("parse error");
    return false;
}

void setType(char letter, sio_8211SubfieldFormat &format)
{
    constexpr std::string_view Letters = "AIRSCBX"; // in the order of the types
    const char upper =
        letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    const std::size_t code = Letters.find(upper);
    if (code != std::string_view::npos)
        format.setType(static_cast<sio_8211SubfieldFormat::type>(code));
}

void setConverter(sio_8211SubfieldFormat &format, const sio_8211ConverterHints *hints)
{
    static const sio_8211Converter_A converterA;
    static const sio_8211Converter_I converterI;
    static const sio_8211Converter_R converterR;
    static const sio_8211Converter_S converterS;
    const sio_8211Converter *converter = nullptr;
    switch (format.getType()) {
    case sio_8211SubfieldFormat::A:
        converter = &converterA;
        break;
    case sio_8211SubfieldFormat::I:
        converter = &converterI;
        break;
    case sio_8211SubfieldFormat::R:
        converter = &converterR;
        break;
    case sio_8211SubfieldFormat::S:
        converter = &converterS;
        break;
    case sio_8211SubfieldFormat::B:
        if (hints != nullptr) {
            const auto hint = hints->find(format.getLabel());
            converter = hint != hints->end() ? hint->second : nullptr;
        }
        break;
    case sio_8211SubfieldFormat::C:
    case sio_8211SubfieldFormat::X:
        break;
    }
    format.setConverter(converter);
}

} // namespace iso8211
