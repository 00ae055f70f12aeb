#pragma once

#include "iso8211/sio_8211directory.h"
#include "iso8211/sio_8211field.h"
#include "iso8211/sio_8211leader.h"

#include <cstdint>
#include <iosfwd>

namespace iso8211 {

/// A record: leader, directory and field area.
class sio_8211Record {
public:
    virtual ~sio_8211Record() = default;
    sio_8211Record(const sio_8211Record &) = delete;
    sio_8211Record &operator=(const sio_8211Record &) = delete;

    [[nodiscard]] virtual const sio_8211Leader &getLeader() const = 0;
    /// Reads the record. What cannot be read sets failbit; the record then keeps
    /// what it had read.
    virtual std::istream &streamExtract(std::istream &stream) = 0;

    [[nodiscard]] const sio_8211Directory &getDirectory() const { return m_directory; }
    [[nodiscard]] const sio_8211FieldArea &getFieldArea() const { return m_fieldArea; }
    /// The stream position behind that field which reaches furthest.
    [[nodiscard]] std::int64_t endOfFields() const { return m_endOfFields; }

protected:
    sio_8211Record() = default;

    sio_8211Directory &directory() { return m_directory; }
    sio_8211FieldArea &fieldArea() { return m_fieldArea; }
    /// Reads the fields of all directory entries, counted from a stream position.
    void readFields(std::istream &stream, std::int64_t base);

private:
    sio_8211Directory m_directory;
    sio_8211FieldArea m_fieldArea;
    std::int64_t m_endOfFields = 0;
};

/// The data descriptive record. It stands at the very start of its stream.
class sio_8211DDR : public sio_8211Record {
public:
    sio_8211DDR() { directory().setLeader(&m_leader); }

    [[nodiscard]] const sio_8211DDRLeader &getLeader() const override { return m_leader; }
    std::istream &streamExtract(std::istream &stream) override;

private:
    sio_8211DDRLeader m_leader;
};

/// A data record. Its fields count from where the directory ends in the stream,
/// whatever base address its leader names.
class sio_8211DR : public sio_8211Record {
public:
    sio_8211DR() { directory().setLeader(&m_leader); }

    [[nodiscard]] const sio_8211DRLeader &getLeader() const override { return m_leader; }
    std::istream &streamExtract(std::istream &stream) override;

    /// Whether the record consists of its field area only, and the leader and
    /// directory of an earlier one hold.
    [[nodiscard]] bool isReusingLeaderAndDirectory() const
    {
        return m_reusingLeaderAndDirectory;
    }
    void reuseLeaderAndDirectory(bool reuse) { m_reusingLeaderAndDirectory = reuse; }

private:
    sio_8211DRLeader m_leader;
    bool m_reusingLeaderAndDirectory = false;
};

std::istream &operator>>(std::istream &stream, sio_8211Record &record);

} // namespace iso8211

// The established names of the library.
using iso8211::sio_8211DDR;
using iso8211::sio_8211DR;
using iso8211::sio_8211Record;
