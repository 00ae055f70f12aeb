#pragma once

#include <QByteArray>

class QIODevice;

/// Reads the profiles (records of type B) of a USGS DEM file, character by character
/// from the device's current position on. Numbers stand apart by any characters, and
/// records by blanks, with or without line feeds.
class UsgsDemReader {
public:
    explicit UsgsDemReader(QIODevice &in);

    /// Reads the next elevation: digits and points, with or without a minus before
    /// them. At the end of the file the result is 0.
    [[nodiscard]] double ReadNumber();
    /// Reads a whole number behind blanks; 0, with nothing read, where there is none.
    [[nodiscard]] int readInteger();
    /// Reads all up to the next blank as a number.
    [[nodiscard]] double readReal();

    /// Whether ReadNumber() has looked for a number in vain.
    [[nodiscard]] bool isExhausted() const { return m_exhausted; }

private:
    static constexpr int EndOfFile = -1;

    // The next character, without and with going past it.
    int peek() { return m_position < m_filled || fill() ? *m_position : EndOfFile; }
    int next() { return m_position < m_filled || fill() ? *m_position++ : EndOfFile; }
    bool fill();
    void skipBlanks();

    QIODevice &m_in;
    QByteArray m_buffer;
    const uchar *m_position = nullptr;
    const uchar *m_filled = nullptr; // end of what was read
    bool m_exhausted = false;
};
