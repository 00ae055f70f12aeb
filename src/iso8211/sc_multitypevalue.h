#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace iso8211 {

/// A tagged value: a long of 32 bits, an unsigned one, a double, a text or nothing.
class sc_MultiTypeValue {
public:
    enum ValueType { Long = 0, UnsignedLong = 1, Double = 2, String = 3, None = 4 };

    sc_MultiTypeValue() = default;
    sc_MultiTypeValue(const sc_MultiTypeValue &other);
    sc_MultiTypeValue(sc_MultiTypeValue &&) noexcept = default;
    sc_MultiTypeValue &operator=(const sc_MultiTypeValue &other);
    sc_MultiTypeValue &operator=(sc_MultiTypeValue &&) noexcept = default;
    ~sc_MultiTypeValue() = default;

    [[nodiscard]] ValueType valueType() const
    {
        return static_cast<ValueType>(m_value.index());
    }

    void setLong(std::int32_t value) { m_value = value; }
    void setUnsignedLong(std::uint32_t value) { m_value = value; }
    void setDouble(double value) { m_value = value; }
    void setString(const std::string &value);
    /// Frees a held text and returns to no value.
    void reset() { m_value = std::monostate(); }

    /// True for a long. An unsigned long is copied and still answers false.
    bool getLong(std::int32_t &value) const;
    /// Takes a long as well as an unsigned one.
    bool getUnsignedLong(std::uint32_t &value) const;
    bool getDouble(double &value) const;
    bool getString(std::string &value) const;

    /// Texts are not compared by content: two of them are equal only if they are
    /// the same object.
    bool operator==(const sc_MultiTypeValue &other) const;

private:
    // The order of the members is that of ValueType.
    std::variant<std::int32_t, std::uint32_t, double, std::unique_ptr<std::string>,
                 std::monostate>
        m_value = std::monostate();
};

} // namespace iso8211

// The established names of the library.
using iso8211::sc_MultiTypeValue;
