#pragma once

#include <QString>

class QIODevice;

/// What a header file tells about a raw binary raster.
struct BinDemHeader {
    static constexpr int UnknownNumber = -1;
    static constexpr double NotSet = -999999.999999;

    int numberOfRows = UnknownNumber;
    int numberOfColumns = UnknownNumber;
    int numberOfBands = 1;
    int bitsPerPixel = UnknownNumber;
    QString byteOrder = "I";
    double upperLeftX = NotSet; // centres of pixels, in map units
    double upperLeftY = NotSet;
    double lowerRightX = NotSet;
    double lowerRightY = NotSet;
    double lowerLeftX = NotSet;
    double lowerLeftY = NotSet;
    double pixelWidth = NotSet;
    double pixelHeight = NotSet;
    QString mapUnits = "pixel";
    double noDataValue = 0.0;
    bool hasNoDataValue = false;
    QString layout = "BIL";

    /// Takes over the value of a key that begins with a known word, in any case.
    /// False, with nothing changed, if the key is unknown.
    bool insertEntry(const QString &key, const QString &value);
    /// Reads lines of a key and a value that stand apart by ":", "=" or blanks.
    void readEntries(QIODevice &in);

    [[nodiscard]] bool knowsSize() const
    {
        return numberOfRows != UnknownNumber && numberOfColumns != UnknownNumber;
    }
    [[nodiscard]] bool hasUsableBits() const
    {
        return bitsPerPixel == 8 || bitsPerPixel == 16 || bitsPerPixel == 32;
    }
    [[nodiscard]] bool isBigEndian() const;
    /// Width and height from the centre of the first pixel to that of the last.
    [[nodiscard]] double extentX() const { return (numberOfColumns - 1.0) * pixelWidth; }
    [[nodiscard]] double extentY() const { return (numberOfRows - 1.0) * pixelHeight; }
    /// One line for each value that is missing or cannot be used.
    [[nodiscard]] QString faults() const;
    /// The faults as a whole message; empty if there are none.
    [[nodiscard]] QString faultsMessage() const;
};
