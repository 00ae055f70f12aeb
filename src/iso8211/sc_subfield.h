#pragma once

#include "iso8211/sc_multitypevalue.h"
#include "iso8211/sc_name.h"

#include <cstdint>
#include <iosfwd>
#include <string>

namespace iso8211 {

/// A typed value with the name or the mnemonic under which a file describes it.
class sc_Subfield {
public:
    /// 5 and 10 are not used.
    enum Type {
        A = 0,
        I = 1,
        R = 2,
        S = 3,
        C = 4,
        BI8 = 6,
        BI16 = 7,
        BI24 = 8,
        BI32 = 9,
        BUI8 = 11,
        BUI16 = 12,
        BUI24 = 13,
        BUI32 = 14,
        BFP32 = 15,
        BFP64 = 16
    };

    [[nodiscard]] Type getSubfieldType() const { return m_type; }
    [[nodiscard]] const std::string &getName() const { return m_name.text(); }
    [[nodiscard]] const std::string &getMnemonic() const { return m_mnemonic.text(); }
    [[nodiscard]] const sc_MultiTypeValue &getValue() const { return m_value; }
    void setName(const std::string &name) { m_name = sc_Name(name); }
    void setMnemonic(const std::string &mnemonic) { m_mnemonic = sc_Name(mnemonic); }
    /// The same with a text that others hold too.
    void shareName(const sc_Name &name) { m_name = name; }
    void shareMnemonic(const sc_Name &mnemonic) { m_mnemonic = mnemonic; }

    /// Each setter sets the type along with the value.
    void setA(const std::string &value) { setText(A, value); }
    void setC(const std::string &value) { setText(C, value); }
    void setI(std::int32_t value) { setSigned(I, value); }
    void setR(double value) { setReal(R, value); }
    void setS(double value) { setReal(S, value); }
    void setBI8(std::int32_t value) { setSigned(BI8, value); }
    void setBI16(std::int32_t value) { setSigned(BI16, value); }
    void setBI24(std::int32_t value) { setSigned(BI24, value); }
    void setBI32(std::int32_t value) { setSigned(BI32, value); }
    void setBUI8(std::uint32_t value) { setUnsigned(BUI8, value); }
    void setBUI16(std::uint32_t value) { setUnsigned(BUI16, value); }
    void setBUI24(std::uint32_t value) { setUnsigned(BUI24, value); }
    void setBUI32(std::uint32_t value) { setUnsigned(BUI32, value); }
    /// Keeps the 32 bits of the number as a long.
    void setBFP32(float value);
    void setBFP64(double value) { setReal(BFP64, value); }
    /// Drops the value and leaves the type: so an empty field differs from a zero.
    void setUnvalued() { m_value.reset(); }

    /// Each getter leaves its argument alone and answers false unless the subfield
    /// is of that very type and holds a value.
    bool getA(std::string &value) const
    {
        return m_type == A && m_value.getString(value);
    }
    bool getC(std::string &value) const
    {
        return m_type == C && m_value.getString(value);
    }
    bool getI(std::int32_t &value) const { return getSigned(I, value); }
    bool getR(double &value) const { return m_type == R && m_value.getDouble(value); }
    bool getS(double &value) const { return m_type == S && m_value.getDouble(value); }
    bool getBI8(std::int32_t &value) const { return getSigned(BI8, value); }
    bool getBI16(std::int32_t &value) const { return getSigned(BI16, value); }
    bool getBI24(std::int32_t &value) const { return getSigned(BI24, value); }
    bool getBI32(std::int32_t &value) const { return getSigned(BI32, value); }
    bool getBUI8(std::uint32_t &value) const { return getUnsigned(BUI8, value); }
    bool getBUI16(std::uint32_t &value) const { return getUnsigned(BUI16, value); }
    bool getBUI24(std::uint32_t &value) const { return getUnsigned(BUI24, value); }
    bool getBUI32(std::uint32_t &value) const { return getUnsigned(BUI32, value); }
    bool getBFP32(float &value) const;
    bool getBFP64(double &value) const
    {
        return m_type == BFP64 && m_value.getDouble(value);
    }

    /// See sc_MultiTypeValue for how values compare.
    bool operator==(const sc_Subfield &other) const = default;

private:
    void setText(Type type, const std::string &value);
    void setSigned(Type type, std::int32_t value);
    void setUnsigned(Type type, std::uint32_t value);
    void setReal(Type type, double value);
    bool getSigned(Type type, std::int32_t &value) const;
    bool getUnsigned(Type type, std::uint32_t &value) const;

    // In the order in which two subfields are compared.
    sc_Name m_mnemonic;
    sc_Name m_name;
    Type m_type = I;
    sc_MultiTypeValue m_value;
};

/// What the walk over a record calls with a copy of each subfield. May be null.
extern int (*UseSubfield)(sc_Subfield subfield);

/// Hands a copy of the subfield to UseSubfield and writes nothing.
std::ostream &operator<<(std::ostream &stream, const sc_Subfield &subfield);

} // namespace iso8211

// The established names of the library.
using iso8211::sc_Subfield;
using iso8211::UseSubfield;
