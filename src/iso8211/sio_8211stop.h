#pragma once

#include <cstdint>
#include <string>

namespace iso8211 {

/// Why the reading of a file ended.
enum class sio_8211Cause {
    None,         ///< the file is read, or at its end
    Description,  ///< the description at the head is cut short or none
    Record,       ///< a leader, a directory or a field is cut short or none
    Backwards,    ///< the fields of a record go backwards, so none can follow it
    NoProgress,   ///< a record without a byte would come again for ever
    Subfield,     ///< no converter reads a subfield
    TooManyFields ///< more fields and subfields than the bytes of a record make
};

/// Where and why the reading of a file ended.
struct sio_8211Stop {
    std::int64_t record = 0; ///< 1 for the first data record, 0 for the description
    sio_8211Cause cause = sio_8211Cause::None;

    /// Such as "record 3: a subfield has no converter"; empty without a cause.
    [[nodiscard]] std::string text() const;
    bool operator==(const sio_8211Stop &) const = default;
};

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211Cause;
using iso8211::sio_8211Stop;
