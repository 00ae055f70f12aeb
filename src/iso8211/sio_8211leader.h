#pragma once

#include <cstdint>
#include <iosfwd>

namespace iso8211 {

/// The 24 bytes at the head of a record. What they say is taken as it comes and
/// judged by those who use it.
class sio_8211Leader {
public:
    static constexpr std::int32_t Size = 24;

    virtual ~sio_8211Leader() = default;
    /// Leaves the leader alone and sets failbit if 24 bytes cannot be had.
    virtual std::istream &streamExtract(std::istream &stream) = 0;

    [[nodiscard]] std::int32_t getRecordLength() const { return m_recordLength; }
    [[nodiscard]] char getLeaderIdentifier() const { return m_leaderIdentifier; }
    [[nodiscard]] std::int32_t getBaseAddrOfFieldArea() const
    {
        return m_baseAddrOfFieldArea;
    }
    /// Widths of the three parts of a directory entry, in bytes.
    [[nodiscard]] std::int32_t getSizeOfFieldLengthField() const
    {
        return m_sizeOfFieldLengthField;
    }
    [[nodiscard]] std::int32_t getSizeOfFieldPosField() const
    {
        return m_sizeOfFieldPosField;
    }
    [[nodiscard]] std::int32_t getSizeOfFieldTagField() const
    {
        return m_sizeOfFieldTagField;
    }

protected:
    sio_8211Leader() = default;
    sio_8211Leader(const sio_8211Leader &) = default;
    sio_8211Leader &operator=(const sio_8211Leader &) = default;

    /// Reads the 24 bytes; false, with failbit set, if they cannot be had.
    static bool readBytes(std::istream &stream, char (&bytes)[Size]);
    void takeCommonPart(const char (&bytes)[Size]);

private:
    std::int32_t m_recordLength = 0;
    char m_leaderIdentifier = ' ';
    std::int32_t m_baseAddrOfFieldArea = 0;
    std::int32_t m_sizeOfFieldLengthField = 0;
    std::int32_t m_sizeOfFieldPosField = 0;
    std::int32_t m_sizeOfFieldTagField = 0;
};

/// The leader of the data descriptive record.
class sio_8211DDRLeader : public sio_8211Leader {
public:
    std::istream &streamExtract(std::istream &stream) override;

    [[nodiscard]] char getInterchangeLevel() const { return m_interchangeLevel; }
    [[nodiscard]] char getInlineCodeExtensionIndicator() const
    {
        return m_inlineCodeExtensionIndicator;
    }
    [[nodiscard]] char getVersionNumber() const { return m_versionNumber; }
    [[nodiscard]] char getAppIndicator() const { return m_appIndicator; }
    [[nodiscard]] std::int32_t getFieldControlLength() const
    {
        return m_fieldControlLength;
    }

private:
    char m_interchangeLevel = ' ';
    char m_inlineCodeExtensionIndicator = ' ';
    char m_versionNumber = ' ';
    char m_appIndicator = ' ';
    std::int32_t m_fieldControlLength = 0;
};

/// The leader of a data record.
class sio_8211DRLeader : public sio_8211Leader {
public:
    std::istream &streamExtract(std::istream &stream) override;
};

std::istream &operator>>(std::istream &stream, sio_8211Leader &leader);

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211DDRLeader;
using iso8211::sio_8211DRLeader;
using iso8211::sio_8211Leader;
