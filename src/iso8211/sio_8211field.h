#pragma once

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>

namespace iso8211 {

/// The bytes of one field, without the terminator that ends it in the file.
class sio_8211Field {
public:
    sio_8211Field() = default;
    /// A field that is going to read `length` bytes.
    explicit sio_8211Field(std::int32_t length) : m_length(length) {}
    virtual ~sio_8211Field() = default;
    sio_8211Field(const sio_8211Field &) = default;
    sio_8211Field &operator=(const sio_8211Field &) = default;

    /// Reads as many bytes as the length says and the terminator behind them; any
    /// other byte there, or too few of them, sets failbit.
    virtual std::istream &streamExtract(std::istream &stream);

    [[nodiscard]] const char *getData() const { return m_data.data(); }
    [[nodiscard]] std::int32_t getDataLength() const { return m_length; }

    /// Takes the text from offset up to the terminator, at most `limit` bytes of
    /// it, and moves offset past the terminator. Without a terminator it takes the
    /// rest and offset lands beyond the end. False if offset is not in the field.
    bool getVariableSubfield(std::string &dest, std::int32_t &offset, char terminator,
                             std::size_t limit) const;

private:
    std::string m_data;
    std::int32_t m_length = 0;
};

/// The fields of a record in the order of its directory. Their addresses last.
class sio_8211FieldArea : public std::deque<sio_8211Field> {};

std::istream &operator>>(std::istream &stream, sio_8211Field &field);

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211Field;
using iso8211::sio_8211FieldArea;
