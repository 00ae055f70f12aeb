#include "importers/japandem.h"

#include "importers/blankelevation.h"

#include <QCoreApplication>
#include <QIODevice>

namespace {

constexpr int StartWidth = 6; // bytes that must be there, whatever they hold
constexpr int SizeOffset = 23;
constexpr int SizeWidth = 3;
constexpr int PrefixWidth = 9; // before the elevations of each row
constexpr int ElevationWidth = 5;

QString tr(const char *text)
{
    return QCoreApplication::translate("JapanConversionDialog", text);
}

// Reads one file and keeps the text of what was wrong with it.
class Reader {
public:
    Reader(QIODevice &in, const QString &fileName) : m_in(in), m_fileName(fileName) {}

    bool readSize(int *width, int *height)
    {
        if (m_in.read(StartWidth).size() < StartWidth)
            return fail("Could not read the first 6 bytes of \"%1\".");
        const bool reached = m_in.size() >= SizeOffset && m_in.seek(SizeOffset);
        if (!reached || !readNumber(SizeWidth, width))
            return fail("Could not read width info in \"%1\".");
        if (*width == 0)
            return fail("Invalid input file:\nThe width was read as zero in \"%1\".");
        if (!readNumber(SizeWidth, height))
            return fail("Could not read height info in \"%1\".");
        if (*height == 0)
            return fail("Invalid input file:\nThe height was read as zero in \"%1\".");
        if (!skipLine())
            return fail("Could not scan to the first newline character in \"%1\".");
        return true;
    }

    bool readPrefix()
    {
        return m_in.read(PrefixWidth).size() == PrefixWidth ||
               fail("Could not read 9 bytes in \"%1\".");
    }

    bool readElevation(int *value)
    {
        return readNumber(ElevationWidth, value) ||
               fail("Could not read a 5 byte elevation value in \"%1\".");
    }

    bool finishRow()
    {
        return skipLine() || fail("Could not scan to a newline character in \"%1\".");
    }

    [[nodiscard]] const QString &error() const { return m_error; }

private:
    // A full field of any text; what is no number counts as 0.
    bool readNumber(int width, int *value)
    {
        const QByteArray field = m_in.read(width);
        *value = QString::fromLatin1(field).toInt();
        return field.size() == width;
    }

    bool skipLine()
    {
        char c = '\0';
        while (m_in.getChar(&c))
            if (c == '\n')
                return true;
        return false;
    }

    bool fail(const char *text)
    {
        m_error = tr(text).arg(m_fileName);
        return false;
    }

    QIODevice &m_in;
    const QString m_fileName;
    QString m_error;
};

Result<JapanDem> readRows(Reader &in, QSize size, int voidValue, Progress &progress)
{
    JapanDem dem;
    dem.image = blankElevation(size.width(), size.height());
    if (!in.readPrefix())
        return failed(in.error());
    for (int row = 0; row < size.height(); ++row) {
        if (!progress.step(row, size.height()))
            return stopped();
        for (int column = 0; column < size.width(); ++column) {
            int value = 0;
            if (!in.readElevation(&value))
                return failed(in.error());
            if (value == voidValue) {
                ++dem.voidCount;
                value = 0;
            }
            dem.image.setElevation(column, row, value);
            if (value != 0)
                ++dem.nonZeroCount;
        }
        if (!in.finishRow())
            return failed(in.error());
        // The file may end after its last line.
        if (!in.readPrefix() && row != size.height() - 1)
            return failed(in.error());
    }
    return dem;
}

} // namespace

QString JapanDem::message() const
{
    return tr("%1 non-zero elevations found.").arg(nonZeroCount);
}

Result<JapanDem> convertJapanDem(QIODevice &in, int voidValue, const QString &fileName,
                                 Progress &progress)
{
    Reader reader(in, fileName);
    int width = 0;
    int height = 0;
    if (!reader.readSize(&width, &height))
        return failed(reader.error());
    return readRows(reader, {width, height}, voidValue, progress);
}
