#pragma once

#include "iso8211/sio_8211converter.h"
#include "iso8211/sio_8211subfieldformat.h"

#include <span>
#include <string_view>

namespace iso8211 {

/// Takes type, width or delimiter and converter of the subfields, one after the
/// other, from a text such as "(A,3I(5),B(16))".
///
///     controls   "(" list ")"  or  "((" list "))"
///     list       item { "," item }
///     item       spec | INTEGER spec | INTEGER "(" item ")"
///     spec       TYPE [ "(" INTEGER | delimiter ")" ]
///
/// A repeated group holds one item and takes effect once. What the controls name
/// beyond the last subfield is passed over. A text of another form is reported on
/// the standard error stream; false then, and what was understood before holds.
bool sio_8211ParseFormatControls(std::string_view text,
                                 std::span<sio_8211SubfieldFormat> subfields,
                                 const sio_8211ConverterHints *hints);

/// Sets the type that a letter stands for, in either case. Other characters change
/// nothing.
void setType(char letter, sio_8211SubfieldFormat &format);

/// Sets the converter that the type asks for: one of the four shared ones for a
/// text, that of the hints for the label of a B, none for C and X.
void setConverter(sio_8211SubfieldFormat &format, const sio_8211ConverterHints *hints);

} // namespace iso8211

// The established names of the library.
using iso8211::setConverter;
using iso8211::setType;
using iso8211::sio_8211ParseFormatControls;
