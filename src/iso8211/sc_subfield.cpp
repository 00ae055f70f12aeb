#include "iso8211/sc_subfield.h"

#include <bit>
#include <ostream>

namespace iso8211 {

int (*UseSubfield)(sc_Subfield subfield) = nullptr;

void sc_Subfield::setText(Type type, const std::string &value)
{
    m_type = type;
    m_value.setString(value);
}

void sc_Subfield::setSigned(Type type, std::int32_t value)
{
    m_type = type;
    m_value.setLong(value);
}

void sc_Subfield::setUnsigned(Type type, std::uint32_t value)
{
    m_type = type;
    m_value.setUnsignedLong(value);
}

void sc_Subfield::setReal(Type type, double value)
{
    m_type = type;
    m_value.setDouble(value);
}

void sc_Subfield::setBFP32(float value)
{
    setSigned(BFP32, std::bit_cast<std::int32_t>(value));
}

bool sc_Subfield::getSigned(Type type, std::int32_t &value) const
{
    return m_type == type && m_value.valueType() == sc_MultiTypeValue::Long &&
           m_value.getLong(value);
}

bool sc_Subfield::getUnsigned(Type type, std::uint32_t &value) const
{
    return m_type == type && m_value.getUnsignedLong(value);
}

bool sc_Subfield::getBFP32(float &value) const
{
    std::int32_t bits = 0;
    if (!getSigned(BFP32, bits))
        return false;
    value = std::bit_cast<float>(bits);
    return true;
}

std::ostream &operator<<(std::ostream &stream, const sc_Subfield &subfield)
{
    if (UseSubfield != nullptr)
        UseSubfield(subfield);
    return stream;
}

} // namespace iso8211
