#pragma once

namespace iso8211 {

/// Ends a field and a directory.
inline constexpr char FieldTerminator = 0x1E;
/// Ends a subfield of variable length.
inline constexpr char UnitTerminator = 0x1F;

} // namespace iso8211

// The established names of the library.
using iso8211::FieldTerminator;
using iso8211::UnitTerminator;
