#pragma once

#include "iso8211/sio_8211converter.h"
#include "iso8211/sio_8211subfieldformat.h"

#include <string>
#include <vector>

namespace iso8211 {

class sio_8211DDRField;

/// How one field lies in a file: its subfields in order.
class sio_8211FieldFormat : public std::vector<sio_8211SubfieldFormat> {
public:
    enum dataStructCode { elementary = 0, vector_ = 1, array = 2, concatenated = 3 };
    enum dataTypeCode {
        char_string = 0,
        implicit_point = 1,
        explicit_point = 2,
        explicit_point_scaled = 3,
        char_bit_string = 4,
        bit_string = 5,
        mixed_data_type = 6
    };

    [[nodiscard]] dataStructCode getDataStructCode() const { return m_dataStructCode; }
    [[nodiscard]] dataTypeCode getDataTypeCode() const { return m_dataTypeCode; }
    [[nodiscard]] const std::string &getTag() const { return m_tag; }
    [[nodiscard]] const std::string &getName() const { return m_name; }
    [[nodiscard]] char getFieldTerm() const { return m_fieldTerm; }
    [[nodiscard]] char getUnitTerm() const { return m_unitTerm; }
    /// Never set in reading: the data alone decide how often a field repeats.
    [[nodiscard]] bool isRepeating() const { return m_isRepeating; }

    void setDataStructCode(dataStructCode code) { m_dataStructCode = code; }
    void setDataTypeCode(dataTypeCode code) { m_dataTypeCode = code; }
    void setTag(const std::string &tag) { m_tag = tag; }
    void setName(const std::string &name) { m_name = name; }

    /// Field formats compare by their tags, with a plain text too.
    bool operator==(const sio_8211FieldFormat &other) const
    {
        return m_tag == other.m_tag;
    }
    bool operator<(const sio_8211FieldFormat &other) const { return m_tag < other.m_tag; }
    bool operator>(const sio_8211FieldFormat &other) const { return m_tag > other.m_tag; }
    bool operator==(const std::string &tag) const { return m_tag == tag; }
    bool operator<(const std::string &tag) const { return m_tag < tag; }
    bool operator>(const std::string &tag) const { return m_tag > tag; }

private:
    dataStructCode m_dataStructCode = elementary;
    dataTypeCode m_dataTypeCode = implicit_point;
    std::string m_tag;
    std::string m_name;
    char m_fieldTerm = ';';
    char m_unitTerm = '&';
    bool m_isRepeating = false;
};

/// Makes a field format from a data descriptive field. False for an unknown
/// structure or type code; format controls that cannot be understood are no
/// failure, they leave subfields without a converter.
bool sio_8211MakeFieldFormat(sio_8211FieldFormat &format, const sio_8211DDRField &field,
                             const std::string &tag, const sio_8211ConverterHints *hints);

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211FieldFormat;
using iso8211::sio_8211MakeFieldFormat;
