#pragma once

#include "base/result.h"

#include <QRgb>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>

/// The value of a `key=value` line, all behind the `=`; none where the line is not this
/// key. Fails where it begins with it and has no `=`.
[[nodiscard]] Result<std::optional<QStringView>> valueUnderKey(QStringView line,
                                                               QStringView key);

/// Removes blanks and tabs from the key side of a line.
void compactKey(QString &line);

// Numbers that do not convert read as zero.
[[nodiscard]] inline qint32 wholeOf(QStringView value) { return value.toInt(); }
[[nodiscard]] inline bool flagOf(QStringView value) { return value.toInt() != 0; }
[[nodiscard]] inline double realOf(QStringView value) { return value.toDouble(); }

/// Reads a colour that the file holds as BBGGRR in base 16; always opaque.
[[nodiscard]] Result<QRgb> readColour(QStringView value);
/// The six digits of a colour, blue first.
[[nodiscard]] QString colourText(QRgb colour);

/// Reads two or three whole numbers. `line` is for the complaint.
[[nodiscard]] Result<std::array<qint32, 2>> readPair(QStringView line, QStringView value);
[[nodiscard]] Result<std::array<qint32, 3>> readTriple(QStringView line,
                                                       QStringView value);
