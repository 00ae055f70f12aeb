#pragma once

#include "iso8211/sio_8211terminators.h"

#include <cstdint>
#include <string>

namespace iso8211 {

class sio_8211Converter;

/// How one subfield lies in a file.
class sio_8211SubfieldFormat {
public:
    enum type { A = 0, I = 1, R = 2, S = 3, C = 4, B = 5, X = 6 };
    enum format { fixed = 0, variable = 1 };

    [[nodiscard]] const std::string &getLabel() const { return m_label; }
    [[nodiscard]] type getType() const { return m_type; }
    [[nodiscard]] format getFormat() const { return m_format; }
    /// The width of a fixed subfield, in bytes or, for B, in bits.
    [[nodiscard]] std::int32_t getLength() const { return m_lengthOrDelimiter; }
    [[nodiscard]] char getDelimiter() const
    {
        return static_cast<char>(m_lengthOrDelimiter);
    }
    /// Null where the subfield cannot be read.
    [[nodiscard]] const sio_8211Converter *getConverter() const { return m_converter; }

    void setLabel(const std::string &label) { m_label = label; }
    void setType(type newType) { m_type = newType; }
    /// Makes the subfield fixed as well.
    void setLength(std::int32_t length)
    {
        m_format = fixed;
        m_lengthOrDelimiter = length;
    }
    /// Makes the subfield variable as well.
    void setDelimiter(char delimiter)
    {
        m_format = variable;
        m_lengthOrDelimiter = static_cast<unsigned char>(delimiter);
    }
    void setConverter(const sio_8211Converter *converter) { m_converter = converter; }

private:
    std::string m_label;
    type m_type = A;
    format m_format = variable;
    std::int32_t m_lengthOrDelimiter = UnitTerminator;
    const sio_8211Converter *m_converter = nullptr; // borrowed
};

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211SubfieldFormat;
