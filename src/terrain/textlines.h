#pragma once

#include <QStringDecoder>

#include <optional>
#include <string_view>
#include <vector>

class QIODevice;

/// The lines of a text of any size, one after the other.
///
/// Lines end with a line feed, with or without a carriage return, or with a carriage
/// return alone where the text begins so. UTF-8 unless a byte order mark tells another
/// encoding. Memory is bounded by the longest line that is accepted.
class TextLines {
public:
    static constexpr std::size_t LongestLine = 1 << 20; ///< bytes

    /// Borrows the device, which is open for reading.
    explicit TextLines(QIODevice &device);

    /// The next line without its end, valid until the next call. Nothing at the end, and
    /// where a line is too long.
    [[nodiscard]] std::optional<std::string_view> next();
    /// Number of the line that was given last, from 1; 0 before the first.
    [[nodiscard]] qint64 number() const { return m_number; }
    /// Whether the lines ended because one was longer than is accepted.
    [[nodiscard]] bool endedByLongLine() const { return m_isTooLong; }
    /// Bytes of the device that were read.
    [[nodiscard]] qint64 bytesRead() const { return m_bytesRead; }

private:
    [[nodiscard]] bool fill();
    void begin(std::string_view bytes);
    void append(std::string_view bytes);
    [[nodiscard]] std::string_view take(std::size_t length, std::size_t end);

    QIODevice &m_device;
    std::vector<char> m_chunk;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;    // of what was not given yet
    std::size_t m_end = 0;      // of what was read
    std::size_t m_searched = 0; // no line ends before this
    QStringDecoder m_decoder;   // in use if the text is not UTF-8
    char m_lineEnd = '\n';
    qint64 m_number = 0;
    qint64 m_bytesRead = 0;
    bool m_hasBegun = false;
    bool m_isTooLong = false;
};
