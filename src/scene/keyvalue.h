#pragma once

#include <QRgb>
#include <QString>
#include <QStringView>

#include <array>

/// What became of a line under a key.
enum class KeyMatch {
    Other = 0, // the line is not this key
    Read = 1,
    Broken = 2, // it is this key, but has no value that can be read
};

/// Compares a `key=value` line with a key; `value` becomes all behind the `=`.
[[nodiscard]] KeyMatch matchKey(QStringView line, QStringView key, QStringView *value,
                                QString *error);

/// Removes blanks and tabs from the key side of a line.
void compactKey(QString &line);

// Numbers that do not convert read as zero.
[[nodiscard]] inline qint32 wholeOf(QStringView value) { return value.toInt(); }
[[nodiscard]] inline bool flagOf(QStringView value) { return value.toInt() != 0; }
[[nodiscard]] inline double realOf(QStringView value) { return value.toDouble(); }

/// Reads a colour that the file holds as BBGGRR in base 16; always opaque.
[[nodiscard]] bool readColour(QStringView value, QRgb *colour, QString *error);
/// The six digits of a colour, blue first.
[[nodiscard]] QString colourText(QRgb colour);

/// Reads two or three whole numbers. `line` is for the complaint.
[[nodiscard]] bool readPair(QStringView line, QStringView value,
                            std::array<qint32, 2> *numbers, QString *error);
[[nodiscard]] bool readTriple(QStringView line, QStringView value,
                              std::array<qint32, 3> *numbers, QString *error);
