#pragma once

#include "iso8211/sc_subfield.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace iso8211 {

/// A list of subfields with the tag and the name of their field.
class sc_Field : public std::vector<sc_Subfield> {
public:
    [[nodiscard]] const std::string &getName() const { return m_name.text(); }
    [[nodiscard]] const std::string &getMnemonic() const { return m_mnemonic.text(); }
    void setName(const std::string &name) { m_name = sc_Name(name); }
    void setMnemonic(const std::string &mnemonic) { m_mnemonic = sc_Name(mnemonic); }
    /// The same with a text that others hold too.
    void shareName(const sc_Name &name) { m_name = name; }
    void shareMnemonic(const sc_Name &mnemonic) { m_mnemonic = mnemonic; }

private:
    sc_Name m_name;
    sc_Name m_mnemonic;
};

/// One record of a module.
class sc_Record : public std::vector<sc_Field> {};

/// A whole module.
class sc_Module : public std::vector<sc_Record> {};

/// Writes the mnemonic and the name, then walks the subfields, a line each.
std::ostream &operator<<(std::ostream &stream, const sc_Field &field);
std::ostream &operator<<(std::ostream &stream, const sc_Record &record);
std::ostream &operator<<(std::ostream &stream, const sc_Module &module);

} // namespace iso8211

// The established names of the library.
using iso8211::sc_Field;
using iso8211::sc_Module;
using iso8211::sc_Record;
