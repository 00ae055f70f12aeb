#include "geodata/netcdfhead.h"

#include <QtEndian>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

constexpr quint64 Most = quint64(1) << 60; // numbers beyond are nonsense

// Bytes of a number of each type, from type 1 on.
constexpr int TypeSizes[] = {1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};

// Takes the fields of a head one after the other; all are 0 behind its end.
class HeadReader {
public:
    explicit HeadReader(const QByteArray &head) : m_head(head) {}

    [[nodiscard]] bool isGood() const { return m_isGood; }
    void fail() { m_isGood = false; }
    void setVersion(char version)
    {
        m_countBytes = version == 5 ? 8 : 4;
        m_placeBytes = version == 1 ? 4 : 8;
    }
    void skip(qint64 bytes)
    {
        m_isGood = m_isGood && bytes <= m_head.size() - m_at;
        m_at += m_isGood ? bytes : 0;
    }
    qint64 word() { return number(4); }
    qint64 count() { return number(m_countBytes); }
    void skipCount() { skip(m_countBytes); }
    qint64 place() { return number(m_placeBytes); }
    // A list's length behind its tag; 0 of both where there is none.
    qint64 listLength()
    {
        (void)word();
        return count();
    }
    void skipName() { skip(padded(count())); }
    void skipAttributes()
    {
        for (qint64 left = listLength(); left > 0 && m_isGood; --left) {
            skipName();
            const int size = typeSize();
            const qint64 values = count();
            if (values > m_head.size())
                return fail();
            skip(padded(values * size));
        }
    }
    int typeSize()
    {
        const qint64 type = word();
        if (type < 1 || type > qint64(std::size(TypeSizes))) {
            fail();
            return 0;
        }
        return TypeSizes[type - 1];
    }

private:
    static qint64 padded(qint64 bytes) { return (bytes + 3) / 4 * 4; }

    qint64 number(int bytes)
    {
        const char *const from = m_head.constData() + m_at;
        skip(bytes);
        if (!m_isGood)
            return 0;
        const quint64 read = bytes == 4 ? quint64(qFromBigEndian<quint32>(from))
                                        : qFromBigEndian<quint64>(from);
        m_isGood = read <= Most;
        return m_isGood ? qint64(read) : 0;
    }

    const QByteArray &m_head;
    qint64 m_at = 0;
    int m_countBytes = 4;
    int m_placeBytes = 4;
    bool m_isGood = true;
};

// Where a variable ends; 0 for one of the records.
qint64 endOfVariable(HeadReader &head, const std::vector<qint64> &dimensions)
{
    head.skipName();
    double cells = 1.0;
    for (qint64 left = head.count(); left > 0 && head.isGood(); --left) {
        const qint64 dimension = head.count();
        if (dimension >= qint64(dimensions.size()))
            head.fail();
        else
            cells *= double(dimensions[std::size_t(dimension)]);
    }
    head.skipAttributes();
    const double bytes = cells * head.typeSize();
    head.skipCount(); // of bytes, cut off where they are too many
    const qint64 begin = head.place();
    if (bytes == 0.0)
        return 0;
    if (double(begin) + bytes > double(Most))
        head.fail();
    return head.isGood() ? begin + qint64(bytes) : 0;
}

} // namespace

std::optional<qint64> lengthOfNetCdf(const QByteArray &head)
{
    if (head.size() < 4 || !head.startsWith("CDF") ||
        (head[3] != 1 && head[3] != 2 && head[3] != 5))
        return std::nullopt;
    HeadReader reader(head);
    reader.setVersion(head[3]);
    reader.skip(4);
    reader.skipCount(); // of records
    std::vector<qint64> dimensions;
    for (qint64 left = reader.listLength(); left > 0 && reader.isGood(); --left) {
        reader.skipName();
        dimensions.push_back(reader.count());
    }
    reader.skipAttributes();
    qint64 length = 0;
    for (qint64 left = reader.listLength(); left > 0 && reader.isGood(); --left)
        length = std::max(length, endOfVariable(reader, dimensions));
    return reader.isGood() ? std::optional(length) : std::nullopt;
}
