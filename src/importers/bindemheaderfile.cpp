#include "importers/bindemheaderfile.h"

#include "importers/numbers.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cmath>

namespace {

// Opens the first of some files with the same stem that can be opened.
bool openFirst(QFile &file, const QString &stem, std::initializer_list<const char *> ends)
{
    for (const char *end : ends) {
        file.setFileName(stem + end);
        if (file.open(QIODevice::ReadOnly | QIODevice::Text))
            return true;
    }
    return false;
}

double readNumberLine(QIODevice &in)
{
    constexpr qint64 LongestLine = 1024;
    return leadingNumber(in.readLine(LongestLine));
}

// The next number, or the fallback once one could not be read.
template <typename Number> Number readOr(QTextStream &in, Number fallback)
{
    Number value{};
    in >> value;
    return in.status() == QTextStream::Ok ? value : fallback;
}

} // namespace

QString BinDemHeaderListener::bitsGuessedText(int bitsPerPixel)
{
    return QCoreApplication::translate("BinConversionDialog",
                                       "Guessing %1 bits per pixel from the file size.")
        .arg(bitsPerPixel);
}

bool BinDemHeaderFile::read(const QString &fileName, BinDemHeaderListener &listener)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    m_header = {};
    m_header.readEntries(file);

    const QFileInfo info(fileName);
    const QString stem = info.absolutePath() + "/" + info.completeBaseName();
    completeUpperLeftX(stem);
    completeUpperLeftY(stem);
    completePixelSize();
    guessBits(stem, listener);
    return true;
}

void BinDemHeaderFile::completeUpperLeftX(const QString &stem)
{
    if (m_header.upperLeftX != BinDemHeader::NotSet)
        return;
    if (m_header.lowerLeftX != BinDemHeader::NotSet) {
        m_header.upperLeftX = m_header.lowerLeftX;
        return;
    }
    readWorldFile(stem);
    readStatistics(stem);
}

void BinDemHeaderFile::completeUpperLeftY(const QString &stem)
{
    if (m_header.upperLeftY != BinDemHeader::NotSet)
        return;
    if (m_header.numberOfRows != BinDemHeader::UnknownNumber &&
        m_header.lowerLeftX != BinDemHeader::NotSet &&
        m_header.pixelHeight != BinDemHeader::NotSet)
        m_header.upperLeftY = m_header.extentY() + m_header.lowerLeftY;
    else
        readWorldFile(stem);
}

void BinDemHeaderFile::completePixelSize()
{
    BinDemHeader &h = m_header;
    if (h.pixelWidth == BinDemHeader::NotSet)
        h.pixelWidth = (h.lowerRightX - h.upperLeftX) / (h.numberOfColumns - 1.0);
    if (h.pixelHeight == BinDemHeader::NotSet)
        h.pixelHeight = (h.upperLeftY - h.lowerRightY) / (h.numberOfRows - 1.0);
}

void BinDemHeaderFile::readWorldFile(const QString &stem)
{
    QFile file;
    if (!openFirst(file, stem, {".blw", ".BLW"}))
        return;
    m_header.pixelWidth = readNumberLine(file);
    readNumberLine(file); // the two rotations
    readNumberLine(file);
    m_header.pixelHeight = std::abs(readNumberLine(file));
    m_header.upperLeftX = readNumberLine(file);
    // The line is taken for the position of the lowest row.
    m_header.upperLeftY = readNumberLine(file) + m_header.extentY();
}

void BinDemHeaderFile::readStatistics(const QString &stem)
{
    QFile file;
    if (!openFirst(file, stem, {".stx", ".STX"}))
        return;
    QTextStream in(&file);
    readOr(in, 1); // band
    m_statisticsMinimum = readOr(in, -9999);
    m_statisticsMaximum = readOr(in, 9999);
    if (m_statisticsMinimum == -32768 || m_statisticsMinimum == -9999) {
        m_header.noDataValue = m_statisticsMinimum;
        m_header.hasNoDataValue = true;
    }
}

void BinDemHeaderFile::guessBits(const QString &stem, BinDemHeaderListener &listener)
{
    if (m_header.hasUsableBits() || !m_header.knowsSize())
        return;
    for (const char *end : {".bil", ".BIL", ".flt", ".FLT"}) {
        const QFileInfo raster(stem + end);
        if (!raster.isFile())
            continue;
        const qint64 pixels = qint64(m_header.numberOfRows) * m_header.numberOfColumns;
        for (const int bytes : {1, 2, 4}) {
            if (raster.size() % bytes == 0 && raster.size() / bytes == pixels) {
                m_header.bitsPerPixel = 8 * bytes;
                listener.bitsGuessed(m_header.bitsPerPixel);
                return;
            }
        }
        return;
    }
}
