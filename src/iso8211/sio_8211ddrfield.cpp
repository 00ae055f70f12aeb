#include "iso8211/sio_8211ddrfield.h"

#include "iso8211/sio_8211field.h"
#include "iso8211/sio_8211leader.h"
#include "iso8211/sio_8211terminators.h"

namespace iso8211 {

namespace {

// Longer texts are cut off here.
constexpr std::size_t LongestText = 999;

} // namespace

sio_8211DDRField::sio_8211DDRField(const sio_8211DDRLeader &leader,
                                   const sio_8211Field &field)
    : m_fieldControlLength(leader.getFieldControlLength())
{
    if (field.getDataLength() > 0)
        m_dataStructCode = field.getData()[0];
    if (field.getDataLength() > 1)
        m_dataTypeCode = field.getData()[1];
    std::int32_t offset = m_fieldControlLength;
    for (std::string *const text :
         {&m_dataFieldName, &m_arrayDescriptor, &m_formatControls})
        if (!field.getVariableSubfield(*text, offset, UnitTerminator, LongestText))
            return;
}

} // namespace iso8211
