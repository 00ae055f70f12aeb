#pragma once

#include <QStringDecoder>

#include <string_view>
#include <vector>

class QIODevice;

/// Reads lines of numbers: x, y, z and what may follow.
///
/// Gives what a QTextStream over a device in text mode gives when each line is
/// split at the regular expression "\s+" with empty parts kept and its items are
/// read with QString::toDouble, at a small part of the cost. UTF-8 unless a byte
/// order mark tells another encoding; carriage returns are dropped wherever they
/// stand. Memory is that of the longest line; one that is beyond the memory budget ends
/// the reading with std::bad_alloc and a notice of its size.
class XyzReader {
public:
    /// What a line holds.
    struct Line {
        bool empty = true;
        int items = 0;                    // 3 stands for three or more
        double x = 0.0, y = 0.0, z = 0.0; // 0 for what is no number or absent
    };

    /// Borrows the device, which is open for reading; turns its text mode off.
    explicit XyzReader(QIODevice &device);

    /// True when there is no further line.
    [[nodiscard]] bool atEnd();
    /// Reads over one line; nothing happens at the end.
    void skipLine();
    /// Reads one line; an empty one at the end.
    [[nodiscard]] Line readLine();

private:
    bool findLine();
    bool fill();
    void append(std::string_view bytes);
    void grow(qsizetype size);
    void removeMark(std::string_view bytes);
    [[nodiscard]] bool restIsNothing() const;
    [[nodiscard]] QString decoded() const;

    QIODevice &m_device;
    std::vector<char> m_buffer;
    qsizetype m_begin = 0; // of what was not read yet
    qsizetype m_end = 0;
    qsizetype m_searched = 0;  // no line feed before this
    qsizetype m_lineEnd = -1;  // of the line found, if not negative
    bool m_terminated = false; // by a line feed
    bool m_started = false;    // the device gave something
    bool m_anyLine = false;    // was read
    bool m_exhausted = false;  // the device gives nothing more
    QStringDecoder m_decoder;  // in use if the text is not UTF-8
    std::vector<char> m_chunk;
};

/// QString::toDouble of an ASCII text.
[[nodiscard]] double numberOf(std::string_view text);
