#include "iso8211/sc_multitypevalue.h"

namespace iso8211 {

sc_MultiTypeValue::sc_MultiTypeValue(const sc_MultiTypeValue &other) { *this = other; }

sc_MultiTypeValue &sc_MultiTypeValue::operator=(const sc_MultiTypeValue &other)
{
    if (this == &other)
        return *this;
    switch (other.valueType()) {
    case Long:
        m_value = std::get<Long>(other.m_value);
        break;
    case UnsignedLong:
        m_value = std::get<UnsignedLong>(other.m_value);
        break;
    case Double:
        m_value = std::get<Double>(other.m_value);
        break;
    case String:
        setString(*std::get<String>(other.m_value));
        break;
    case None:
        reset();
        break;
    }
    return *this;
}

void sc_MultiTypeValue::setString(const std::string &value)
{
    // A held text keeps its block, which saves allocations over like records.
    if (auto *const held = std::get_if<String>(&m_value))
        **held = value;
    else
        m_value = std::make_unique<std::string>(value);
}

bool sc_MultiTypeValue::getLong(std::int32_t &value) const
{
    if (const auto *const number = std::get_if<Long>(&m_value)) {
        value = *number;
        return true;
    }
    if (const auto *const number = std::get_if<UnsignedLong>(&m_value))
        value = static_cast<std::int32_t>(*number);
    return false;
}

bool sc_MultiTypeValue::getUnsignedLong(std::uint32_t &value) const
{
    if (const auto *const number = std::get_if<UnsignedLong>(&m_value))
        value = *number;
    else if (const auto *const signedNumber = std::get_if<Long>(&m_value))
        value = static_cast<std::uint32_t>(*signedNumber);
    else
        return false;
    return true;
}

bool sc_MultiTypeValue::getDouble(double &value) const
{
    const auto *const number = std::get_if<Double>(&m_value);
    if (number != nullptr)
        value = *number;
    return number != nullptr;
}

bool sc_MultiTypeValue::getString(std::string &value) const
{
    const auto *const text = std::get_if<String>(&m_value);
    if (text != nullptr)
        value = **text;
    return text != nullptr;
}

bool sc_MultiTypeValue::operator==(const sc_MultiTypeValue &other) const
{
    return this == &other || m_value == other.m_value;
}

} // namespace iso8211
