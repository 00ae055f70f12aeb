#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace iso8211 {

class sc_Subfield;

/// Turns the bytes of one subfield into a typed value. Converters hold no state.
class sio_Converter {
public:
    virtual ~sio_Converter() = default;

    /// Sets type and value and returns the number of bytes consumed. For texts the
    /// length counts bytes, for binary values bits, as the format controls do.
    virtual std::int32_t makeFixedSubfield(sc_Subfield *subfield, const char *data,
                                           std::int32_t length) const = 0;
    /// The same for the bytes before a delimiter, which the caller skips.
    virtual std::int32_t makeVarSubfield(sc_Subfield *subfield, const char *data,
                                         std::int32_t maxLength,
                                         char delimiter) const = 0;
    /// The number of bytes before the delimiter, or maxLength without one.
    [[nodiscard]] virtual std::int32_t
    findVariableSubfieldLength(const char *data, std::int32_t maxLength,
                               char delimiter) const = 0;

protected:
    sio_Converter() = default;
    sio_Converter(const sio_Converter &) = default;
    sio_Converter &operator=(const sio_Converter &) = default;
};

/// What all converters of this file format share.
class sio_8211Converter : public sio_Converter {
public:
    std::int32_t makeVarSubfield(sc_Subfield *subfield, const char *data,
                                 std::int32_t maxLength, char delimiter) const override;
    [[nodiscard]] std::int32_t findVariableSubfieldLength(const char *data,
                                                          std::int32_t maxLength,
                                                          char delimiter) const override;
    /// Bytes of a field that a fixed subfield of this length takes up.
    [[nodiscard]] virtual std::int32_t bytesOf(std::int32_t length) const = 0;
    /// The greatest length that a number of bytes gives room for.
    [[nodiscard]] virtual std::int32_t lengthWithin(std::int32_t bytes) const = 0;
};

/// Subfield label to the converter that reads it, for the binary types, which the
/// format controls cannot tell apart. The lookup is exact. Converters are borrowed.
using sio_8211ConverterHints = std::map<std::string, const sio_8211Converter *>;

/// What the text types share: a length of 0 means that the value is missing.
class sio_8211TextConverter : public sio_8211Converter {
public:
    std::int32_t makeFixedSubfield(sc_Subfield *subfield, const char *data,
                                   std::int32_t length) const override;
    [[nodiscard]] std::int32_t bytesOf(std::int32_t length) const override
    {
        return length;
    }
    [[nodiscard]] std::int32_t lengthWithin(std::int32_t bytes) const override
    {
        return bytes;
    }

protected:
    /// Sets the value from the bytes; an empty text or zero for none.
    virtual void setValue(sc_Subfield &subfield, const char *data,
                          std::int32_t length) const = 0;
};

/// Text as it stands.
class sio_8211Converter_A : public sio_8211TextConverter {
protected:
    void setValue(sc_Subfield &subfield, const char *data,
                  std::int32_t length) const override;
};

/// Reads as A and stores an A. No format control selects it.
class sio_8211Converter_C : public sio_8211Converter_A {};

/// Whole numbers in decimal digits.
class sio_8211Converter_I : public sio_8211TextConverter {
protected:
    void setValue(sc_Subfield &subfield, const char *data,
                  std::int32_t length) const override;
};

/// Numbers with a decimal point.
class sio_8211Converter_R : public sio_8211TextConverter {
protected:
    void setValue(sc_Subfield &subfield, const char *data,
                  std::int32_t length) const override;
};

/// Numbers with an exponent.
class sio_8211Converter_S : public sio_8211TextConverter {
protected:
    void setValue(sc_Subfield &subfield, const char *data,
                  std::int32_t length) const override;
};

/// What the binary types share: the first bytes of a subfield that is wide enough
/// are read, high byte first. Kind has the size and the setter.
template <class Kind> class sio_8211BinaryConverter : public sio_8211Converter {
public:
    std::int32_t makeFixedSubfield(sc_Subfield *subfield, const char *data,
                                   std::int32_t bits) const override
    {
        const std::int32_t width = bits / 8;
        if (width < Kind::Size)
            return 0;
        std::uint64_t raw = 0;
        for (std::int32_t i = 0; i < Kind::Size; ++i)
            raw = raw << 8 | static_cast<unsigned char>(data[i]);
        Kind::set(*subfield, raw);
        return width;
    }
    [[nodiscard]] std::int32_t bytesOf(std::int32_t bits) const override
    {
        return bits / 8 < Kind::Size ? 0 : bits / 8;
    }
    [[nodiscard]] std::int32_t lengthWithin(std::int32_t bytes) const override
    {
        constexpr std::int32_t MostBytes = INT32_MAX / 8;
        return (bytes < MostBytes ? bytes : MostBytes) * 8;
    }
};

/// Sizes and setters of the binary types.
namespace sio_8211Kinds {
/// A signed byte.
struct BI8 {
    static constexpr std::int32_t Size = 1;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// A signed number of 16 bits.
struct BI16 {
    static constexpr std::int32_t Size = 2;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// A signed number of 24 bits.
struct BI24 {
    static constexpr std::int32_t Size = 3;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// A signed number of 32 bits.
struct BI32 {
    static constexpr std::int32_t Size = 4;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// An unsigned byte. Extends the sign of it: 0xC8 gives 4294967240.
struct BUI8 {
    static constexpr std::int32_t Size = 1;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// An unsigned number of 16 bits.
struct BUI16 {
    static constexpr std::int32_t Size = 2;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// An unsigned number of 24 bits.
struct BUI24 {
    static constexpr std::int32_t Size = 3;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// An unsigned number of 32 bits.
struct BUI32 {
    static constexpr std::int32_t Size = 4;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// A floating point number of single precision.
struct BFP32 {
    static constexpr std::int32_t Size = 4;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
/// A floating point number of double precision. Narrows it to single precision and stores
/// a BFP32.
struct BFP64 {
    static constexpr std::int32_t Size = 8;
    static void set(sc_Subfield &subfield, std::uint64_t raw);
};
} // namespace sio_8211Kinds

using sio_8211Converter_BI8 = sio_8211BinaryConverter<sio_8211Kinds::BI8>;
using sio_8211Converter_BI16 = sio_8211BinaryConverter<sio_8211Kinds::BI16>;
using sio_8211Converter_BI24 = sio_8211BinaryConverter<sio_8211Kinds::BI24>;
using sio_8211Converter_BI32 = sio_8211BinaryConverter<sio_8211Kinds::BI32>;
using sio_8211Converter_BUI8 = sio_8211BinaryConverter<sio_8211Kinds::BUI8>;
using sio_8211Converter_BUI16 = sio_8211BinaryConverter<sio_8211Kinds::BUI16>;
using sio_8211Converter_BUI24 = sio_8211BinaryConverter<sio_8211Kinds::BUI24>;
using sio_8211Converter_BUI32 = sio_8211BinaryConverter<sio_8211Kinds::BUI32>;
using sio_8211Converter_BFP32 = sio_8211BinaryConverter<sio_8211Kinds::BFP32>;
using sio_8211Converter_BFP64 = sio_8211BinaryConverter<sio_8211Kinds::BFP64>;

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211BinaryConverter;
using iso8211::sio_8211Converter;
using iso8211::sio_8211Converter_A;
using iso8211::sio_8211Converter_BFP32;
using iso8211::sio_8211Converter_BFP64;
using iso8211::sio_8211Converter_BI16;
using iso8211::sio_8211Converter_BI24;
using iso8211::sio_8211Converter_BI32;
using iso8211::sio_8211Converter_BI8;
using iso8211::sio_8211Converter_BUI16;
using iso8211::sio_8211Converter_BUI24;
using iso8211::sio_8211Converter_BUI32;
using iso8211::sio_8211Converter_BUI8;
using iso8211::sio_8211Converter_C;
using iso8211::sio_8211Converter_I;
using iso8211::sio_8211Converter_R;
using iso8211::sio_8211Converter_S;
using iso8211::sio_8211ConverterHints;
using iso8211::sio_8211TextConverter;
using iso8211::sio_Converter;
namespace sio_8211Kinds = iso8211::sio_8211Kinds;
