#include "importers/bindemheader.h"

#include "importers/numbers.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("BinConversionDialog", text);
}

using SetValue = void (*)(BinDemHeader &header, const QString &value);

struct Entry {
    QStringList prefixes;
    SetValue set;
};

double leading(const QString &text) { return leadingNumber(text.toUtf8()); }

void setDataType(BinDemHeader &header, const QString &value)
{
    if (value == "i8")
        header.bitsPerPixel = 8;
    else if (value == "i16" || value == "integer")
        header.bitsPerPixel = 16;
    else if (value == "f32" || value == "real")
        header.bitsPerPixel = 32;
}

// The first entry decides one of whose prefixes a key begins with.
const QList<Entry> &entries()
{
    using H = BinDemHeader;
    using T = const QString;
    static const QList<Entry> all = {
        {{"rows", "nrows", "number_of_rows"},
         [](H &h, T &v) { h.numberOfRows = v.toInt(); }},
        {{"cols", "ncols", "columns", "number_of_columns"},
         [](H &h, T &v) { h.numberOfColumns = v.toInt(); }},
        {{"bands", "nbands"}, [](H &h, T &v) { h.numberOfBands = v.toInt(); }},
        {{"nbits"}, [](H &h, T &v) { h.bitsPerPixel = v.toInt(); }},
        {{"datatype", "data type"}, setDataType},
        {{"byte_order", "byteorder"}, [](H &h, T &v) { h.byteOrder = v; }},
        {{"ul_x_coordinate", "min. x", "ulxmap", "left_map_x"},
         [](H &h, T &v) { h.upperLeftX = leading(v); }},
        {{"ul_y_coordinate", "max. y", "ulymap", "upper_map_y"},
         [](H &h, T &v) { h.upperLeftY = leading(v); }},
        {{"lr_x_coordinate", "max. x", "right_map_x"},
         [](H &h, T &v) { h.lowerRightX = v.toDouble(); }},
        {{"lr_y_coordinate", "min. y", "lower_map_y"},
         [](H &h, T &v) { h.lowerRightY = v.toDouble(); }},
        {{"xllcorner"}, [](H &h, T &v) { h.lowerLeftX = v.toDouble(); }},
        {{"yllcorner"}, [](H &h, T &v) { h.lowerLeftY = v.toDouble(); }},
        {{"cellsize"}, [](H &h, T &v) { h.pixelWidth = h.pixelHeight = v.toDouble(); }},
        {{"pixel_width", "xdim"}, [](H &h, T &v) { h.pixelWidth = v.toDouble(); }},
        {{"pixel_height", "ydim"}, [](H &h, T &v) { h.pixelHeight = v.toDouble(); }},
        {{"map_units", "ref. units"}, [](H &h, T &v) { h.mapUnits = v; }},
        {{"layout"}, [](H &h, T &v) { h.layout = v; }},
        {{"nodata"},
         [](H &h, T &v) {
             h.noDataValue = v.toDouble();
             h.hasNoDataValue = true;
         }},
    };
    return all;
}

// A line without its end; what is too long for a header line is cut off, so that a
// raster taken for a header needs no memory of its size.
QString readLine(QIODevice &in)
{
    constexpr qint64 LongestLine = 65536;
    const QByteArray line = in.readLine(LongestLine);
    QByteArray rest = line;
    while (!rest.isEmpty() && !rest.endsWith('\n'))
        rest = in.readLine(LongestLine);
    return QString::fromUtf8(line).trimmed();
}

QStringList partsOf(const QString &line)
{
    static const QRegularExpression blanks("\\s+");
    if (line.contains(':'))
        return line.split(':', Qt::SkipEmptyParts);
    if (line.contains('='))
        return line.split('=', Qt::SkipEmptyParts);
    return line.split(blanks, Qt::SkipEmptyParts);
}

} // namespace

bool BinDemHeader::insertEntry(const QString &key, const QString &value)
{
    const QString line = QString("BinConversionDialog::insertEntry(\"%1\", \"%2\")\n");
    std::fputs(line.arg(key, value).toLocal8Bit().constData(), stdout);
    const QString lowered = key.toLower();
    const auto beginsKey = [&](const QString &p) { return lowered.startsWith(p); };
    for (const Entry &entry : entries()) {
        if (std::any_of(entry.prefixes.begin(), entry.prefixes.end(), beginsKey)) {
            entry.set(*this, value);
            return true;
        }
    }
    return false;
}

void BinDemHeader::readEntries(QIODevice &in)
{
    while (!in.atEnd()) {
        const QStringList parts = partsOf(readLine(in));
        if (parts.size() >= 2)
            insertEntry(parts[0].trimmed(), parts[1].trimmed());
    }
    std::fflush(stdout);
}

bool BinDemHeader::isBigEndian() const
{
    const QString order = byteOrder.toLower();
    return order == "motorola" || order == "m";
}

QString BinDemHeader::faults() const
{
    QString text;
    const auto check = [&](bool faulty, const char *line) {
        if (faulty)
            text += tr(line);
    };
    check(numberOfRows == UnknownNumber,
          "ROWS - Number of rows missing or invalid. Valid: 16 to 32768.\n");
    check(numberOfColumns == UnknownNumber,
          "COLS - Number of columns missing or invalid. Valid: 16 to 32768.\n");
    check(numberOfBands != 1,
          "BANDS - Number of spectral bands missing or invalid. Valid: 1 only.\n");
    check(!hasUsableBits(), "Datatype - Number of bits per pixel missing or invalid. "
                            "Valid: 8, 16, 32.\n");
    check(upperLeftX == NotSet, "UL_X_COORDINATE - x coordinate of the center of the "
                                "upper-left pixel missing or invalid.\n");
    check(upperLeftY == NotSet, "UL_Y_COORDINATE - y coordinate of the center of the "
                                "upper-left pixel missing or invalid.\n");
    check(pixelWidth == NotSet, "PIXEL_WIDTH - missing or invalid. Valid: any non-zero "
                                "positive floating point number.\n");
    check(pixelHeight == NotSet, "PIXEL_HEIGHT - missing or invalid. Valid: any "
                                 "non-zero positive floating point number.\n");
    return text;
}

QString BinDemHeader::faultsMessage() const
{
    const QString lines = faults();
    if (lines.isEmpty())
        return {};
    return tr("One or more errors have occured while reading the header file:\n\n") +
           lines + tr("Make sure that the *.BIL, *.HDR and *.BLW files are present.");
}
