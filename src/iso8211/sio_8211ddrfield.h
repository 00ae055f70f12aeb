#pragma once

#include <cstdint>
#include <string>

namespace iso8211 {

class sio_8211DDRLeader;
class sio_8211Field;

/// A data descriptive field taken apart. What the field does not hold is empty.
class sio_8211DDRField {
public:
    sio_8211DDRField(const sio_8211DDRLeader &leader, const sio_8211Field &field);

    [[nodiscard]] char getDataStructCode() const { return m_dataStructCode; }
    [[nodiscard]] char getDataTypeCode() const { return m_dataTypeCode; }
    [[nodiscard]] const std::string &getDataFieldName() const { return m_dataFieldName; }
    [[nodiscard]] const std::string &getArrayDescriptor() const
    {
        return m_arrayDescriptor;
    }
    [[nodiscard]] const std::string &getFormatControls() const
    {
        return m_formatControls;
    }
    [[nodiscard]] std::int32_t getFieldControlLength() const
    {
        return m_fieldControlLength;
    }

private:
    char m_dataStructCode = ' ';
    char m_dataTypeCode = ' ';
    std::string m_dataFieldName;
    std::string m_arrayDescriptor;
    std::string m_formatControls;
    std::int32_t m_fieldControlLength = 0;
};

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211DDRField;
