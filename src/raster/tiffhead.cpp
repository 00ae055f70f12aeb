#include "raster/tiffhead.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr quint64 MostEntries = 4096;

// Numbers of a file in its byte order.
class TiffReader {
public:
    explicit TiffReader(QIODevice &file) : m_file(file) {}

    // Finds the first directory; false if there is none.
    bool open()
    {
        const QByteArray order = m_file.read(2);
        if (order != "II" && order != "MM")
            return false;
        m_littleEndian = order == "II";
        const quint64 version = number(2);
        m_big = version == 43;
        if (version != 42 && !(m_big && number(2) == 8 && number(2) == 0))
            return false;
        return seek(number(wide())) && m_good;
    }

    // The next number of so many bytes; 0 behind the end.
    quint64 number(int bytes)
    {
        const QByteArray read = m_file.read(bytes);
        m_good = m_good && read.size() == bytes;
        quint64 value = 0;
        for (int i = 0; m_good && i < bytes; ++i) {
            const int at = m_littleEndian ? bytes - 1 - i : i;
            value = value << 8 | static_cast<uchar>(read[at]);
        }
        return value;
    }

    bool seek(quint64 at)
    {
        const bool inside = at < static_cast<quint64>(m_file.size());
        return inside && m_file.seek(static_cast<qint64>(at));
    }
    [[nodiscard]] qint64 position() const { return m_file.pos(); }
    // Bytes of an offset, and of the number of an entry's values.
    [[nodiscard]] int wide() const { return m_big ? 8 : 4; }
    [[nodiscard]] int bytesOfCount() const { return m_big ? 8 : 2; }
    [[nodiscard]] bool good() const { return m_good; }

private:
    QIODevice &m_file;
    bool m_littleEndian = true;
    bool m_big = false;
    bool m_good = true;
};

// The highest of an entry's short numbers; they stand in the entry itself if they fit.
int highestShort(TiffReader &reader, quint64 count)
{
    constexpr quint64 MostSamples = 64;
    if (count * 2 > static_cast<quint64>(reader.wide()) &&
        !reader.seek(reader.number(reader.wide())))
        return 0;
    quint64 highest = 0;
    for (quint64 i = 0; i < std::min(count, MostSamples); ++i)
        highest = std::max(highest, reader.number(2));
    return reader.good() ? static_cast<int>(highest) : 0;
}

bool isGeoreference(quint64 tag)
{
    constexpr quint64 Scale = 33550, Tiepoint = 33922, Transformation = 34264,
                      Keys = 34735;
    return tag == Scale || tag == Tiepoint || tag == Transformation || tag == Keys;
}

} // namespace

std::optional<TiffHead> readTiffHead(QIODevice &file)
{
    constexpr quint64 BitsPerSample = 258, SampleFormat = 339, Short = 3, Floating = 3;
    TiffReader reader(file);
    if (file.isSequential() || !reader.open())
        return {};
    TiffHead head;
    const quint64 entries = reader.number(reader.bytesOfCount());
    if (entries == 0 || entries > MostEntries)
        return {};
    const qint64 begin = reader.position();
    const qint64 bytesOfEntry = 4 + 2 * reader.wide();
    for (quint64 i = 0; i < entries; ++i) {
        if (!reader.seek(static_cast<quint64>(begin + qint64(i) * bytesOfEntry)))
            return {};
        const quint64 tag = reader.number(2);
        const quint64 type = reader.number(2);
        const quint64 count = reader.number(reader.wide());
        head.georeferenced = head.georeferenced || isGeoreference(tag);
        if (tag == BitsPerSample && type == Short)
            head.bits = highestShort(reader, count);
        else if (tag == SampleFormat && type == Short)
            head.floating = highestShort(reader, count) == Floating;
        if (!reader.good())
            return {};
    }
    return head;
}

std::optional<TiffHead> readTiffHead(const QString &name)
{
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return readTiffHead(file);
}
