#include "iso8211/sio_8211stop.h"

namespace iso8211 {

namespace {

const char *textOf(sio_8211Cause cause)
{
    switch (cause) {
    case sio_8211Cause::None:
        break;
    case sio_8211Cause::Description:
        return "the description is cut short or none";
    case sio_8211Cause::Record:
        return "the leader, the directory or a field is cut short or none";
    case sio_8211Cause::Backwards:
        return "its fields go backwards, so the next record cannot be found";
    case sio_8211Cause::NoProgress:
        return "the record takes up no bytes";
    case sio_8211Cause::Subfield:
        return "a subfield has no converter";
    case sio_8211Cause::TooManyFields:
        return "there are more fields than its bytes can hold";
    }
    return "";
}

} // namespace

std::string sio_8211Stop::text() const
{
    if (cause == sio_8211Cause::None)
        return {};
    return "record " + std::to_string(record) + ": " + textOf(cause);
}

} // namespace iso8211
