#pragma once

#include <QString>

/// Longest name that formatFrameName() gives, in characters.
constexpr int MaxFrameName = 1023;

/// Puts a frame number into a name template, as printf would with one int.
///
/// The first conversion `%[-+ #0][width][.precision]` with one of `d i u o x X c`
/// takes the number, `%%` is a percent sign. Whatever else begins with a percent
/// sign, a second conversion included, stays as it stands, so that a template
/// from a stranger cannot do harm. A `%c` of number 0 ends the name.
[[nodiscard]] QString formatFrameName(const QString &nameTemplate, int number);

/// Whether the template gives different names to different frames.
[[nodiscard]] bool hasFrameNumber(const QString &nameTemplate);
