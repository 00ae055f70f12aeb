#pragma once

/// Ends a field and a directory.
inline constexpr char FieldTerminator = 0x1E;
/// Ends a subfield of variable length.
inline constexpr char UnitTerminator = 0x1F;
