#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace iso8211 {

class sio_8211Field;
class sio_8211Leader;

/// Where one field of a record lies.
class sio_8211DirEntry {
public:
    explicit sio_8211DirEntry(const sio_8211Leader *leader) : m_leader(leader) {}

    /// Length in the file, which counts the field terminator.
    [[nodiscard]] std::int32_t getFieldLength() const { return m_fieldLength; }
    /// First byte, counted from the base of the field area.
    [[nodiscard]] std::int32_t getPosition() const { return m_position; }
    [[nodiscard]] const std::string &getTag() const { return m_tag; }
    /// The field once it is read; null before.
    [[nodiscard]] const sio_8211Field *getField() const { return m_field; }
    void setField(const sio_8211Field *field) { m_field = field; }

    /// Reads tag, length and position in the widths that the leader names.
    std::istream &streamExtract(std::istream &stream);
    /// Bytes of an entry in the file.
    [[nodiscard]] static std::int32_t sizeOf(const sio_8211Leader &leader);

private:
    std::int32_t m_fieldLength = 0;
    std::int32_t m_position = 0;
    std::string m_tag;
    const sio_8211Field *m_field = nullptr;   // borrowed from the record
    const sio_8211Leader *m_leader = nullptr; // borrowed from the record
};

/// The entries of a record, read up to the field terminator.
class sio_8211Directory : public std::vector<sio_8211DirEntry> {
public:
    /// The leader whose widths rule the reading. It must outlive the directory.
    void setLeader(const sio_8211Leader *leader) { m_leader = leader; }

    std::istream &streamExtract(std::istream &stream);

private:
    const sio_8211Leader *m_leader = nullptr;
};

std::istream &operator>>(std::istream &stream, sio_8211DirEntry &entry);
std::istream &operator>>(std::istream &stream, sio_8211Directory &directory);

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211Directory;
using iso8211::sio_8211DirEntry;
