#include "importers/bindemconversion.h"

#include "base/truncate.h"
#include "importers/bindemsamples.h"
#include "importers/blankelevation.h"
#include "importers/numbers.h"

#include <QCoreApplication>
#include <QIODevice>

#include <cmath>
#include <optional>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("BinConversionDialog", text);
}

// Where the samples begin in a file that starts like a little-endian TIFF: behind a
// certain keyword. No value, if the user stops here.
std::optional<qint64> dataStart(QIODevice &in, BinDemQuestions &questions)
{
    constexpr QByteArrayView Magic("II*\0", 4);
    constexpr QByteArrayView Keyword("#WGS 84|\0", 9);
    constexpr qint64 Searched = 999996;
    if (in.read(Magic.size()) != Magic)
        return 0;
    const qint64 found = in.read(Searched).indexOf(Keyword);
    if (found >= 0)
        return found + Magic.size() + Keyword.size();
    if (questions.proceedWithoutKeyword())
        return 0;
    return {};
}

// Reads rows of the rectangle by seeking.
class RowReader {
public:
    RowReader(QIODevice &in, const BinDemHeader &header, const BinDemOptions &options,
              qint64 start, int columns)
        : m_in(in), m_bytesPerSample(header.bitsPerPixel / 8),
          m_rowBytes(double(m_bytesPerSample) * header.numberOfColumns),
          m_topRow(std::trunc(
              (header.upperLeftY - options.upperLeftY) / header.pixelHeight + 0.5)),
          m_start(
              std::trunc((options.upperLeftX - header.upperLeftX) / header.pixelWidth +
                         0.5) *
                  m_bytesPerSample +
              double(start)),
          m_row(qsizetype(columns) * m_bytesPerSample, '\0')
    {
    }

    // The samples of a row of the rectangle. Where the file has none, those of the row
    // read before stay.
    const QByteArray &read(int row)
    {
        // Doubles hold every offset exactly that a file can have, and junk as well.
        constexpr double LargestOffset = 9007199254740992.0;
        const double offset = (m_topRow + row) * m_rowBytes + m_start;
        // Without a seek reading goes on where it is.
        if (offset >= 0.0 && offset < LargestOffset)
            m_in.seek(static_cast<qint64>(offset));
        m_in.read(m_row.data(), m_row.size());
        return m_row;
    }

private:
    QIODevice &m_in;
    const int m_bytesPerSample;
    const double m_rowBytes;
    const double m_topRow;
    const double m_start; // of the rectangle's left column in the file's first row
    QByteArray m_row;
};

ElevationImage imageOf(const BinDemHeader &header, const BinDemOptions &options)
{
    return blankElevation(std::trunc(options.extentX / header.pixelWidth + 0.5),
                          std::trunc(options.extentY / header.pixelHeight + 0.5));
}

} // namespace

double snappedCoordinate(double value)
{
    constexpr double Step = 0.000001;
    const double steps = std::trunc(halfAwayFromZero(value / Step));
    return std::isnan(steps) ? 0.0 : steps * Step;
}

QString binDemKilobytes(const BinDemHeader &header, const BinDemOptions &options)
{
    constexpr double KilobytesPerByte = 0.0009765625;
    const double bytes = ((options.extentX * (options.extentY * 3)) / header.pixelWidth) /
                         header.pixelHeight;
    const double kilobytes = bytes * KilobytesPerByte;
    return wholeNumberText(std::isfinite(kilobytes) ? kilobytes : 0.0);
}

void StoredRange::include(double elevation)
{
    if (elevation < minimum)
        minimum = elevation;
    if (elevation > maximum)
        maximum = elevation;
}

QString StoredRange::text() const
{
    return QString("minimum %1\nmaximum %2").arg(minimum).arg(maximum);
}

QString StoredRange::message() const
{
    return tr("Range of elevations written to the output file:\n") + text();
}

QString BinDemQuestions::withoutKeyword()
{
    return tr("The BIL file begins with \"II*\", which requires the \"WGS 84\" keyword\n"
              "to locate the beginning of the elevation data block in the BIL file.\n"
              "That keyword could not be located. An import can only be attempted\n"
              "beginning at the first byte, most probably leading to incorrect results.\n"
              "Proceed anyway?");
}

Result<BinDem> convertBinDem(QIODevice &in, const BinDemHeader &header,
                             const BinDemOptions &options, BinDemQuestions &questions,
                             Progress &progress)
{
    const std::optional<qint64> start = dataStart(in, questions);
    if (!start)
        return stopped();
    BinDem dem;
    dem.image = imageOf(header, options);
    const auto samples = makeSampleConverter(header, options);
    if (!samples || dem.image.isNull())
        return dem;
    const int height = dem.image.height();
    RowReader rows(in, header, options, *start, dem.image.width());
    for (int row = height - 1; row >= 0; --row) {
        if (!progress.step(height - 1 - row, height))
            return stopped();
        samples->convert(rows.read(row), dem.image.scanLine(row));
    }
    samples->addRange(&dem.range);
    dem.losses = samples->losses();
    return dem;
}
