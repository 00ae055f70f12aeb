#include "iso8211/sc_record.h"

#include <ostream>

namespace iso8211 {

std::ostream &operator<<(std::ostream &stream, const sc_Field &field)
{
    stream << field.getMnemonic() << " : " << field.getName() << '\n';
    for (const sc_Subfield &subfield : field)
        stream << subfield << '\n';
    return stream;
}

std::ostream &operator<<(std::ostream &stream, const sc_Record &record)
{
    for (const sc_Field &field : record)
        stream << field << '\n';
    return stream;
}

std::ostream &operator<<(std::ostream &stream, const sc_Module &module)
{
    for (const sc_Record &record : module)
        stream << record << '\n';
    return stream;
}

} // namespace iso8211
