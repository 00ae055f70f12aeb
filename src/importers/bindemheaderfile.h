#pragma once

#include "importers/bindemheader.h"

/// Told what the reading of a header had to guess.
class BinDemHeaderListener {
public:
    virtual ~BinDemHeaderListener() = default;
    virtual void bitsGuessed(int bitsPerPixel) = 0;
    /// What the user is told of it.
    [[nodiscard]] static QString bitsGuessedText(int bitsPerPixel);
};

/// A header file with the files that may stand beside it: a world file (.blw) with the
/// position, a statistics file (.stx) with the range of the samples, and the raster.
class BinDemHeaderFile {
public:
    /// Reads a header file and completes what it lacks. False, with nothing changed, if
    /// it cannot be opened; header().faults() tells what is still missing.
    [[nodiscard]] bool read(const QString &fileName, BinDemHeaderListener &listener);

    [[nodiscard]] const BinDemHeader &header() const { return m_header; }
    /// The values of the last statistics file, which a new header does not reset.
    [[nodiscard]] int statisticsMinimum() const { return m_statisticsMinimum; }
    [[nodiscard]] int statisticsMaximum() const { return m_statisticsMaximum; }

private:
    void completeUpperLeftX(const QString &stem);
    void completeUpperLeftY(const QString &stem);
    void completePixelSize();
    void guessBits(const QString &stem, BinDemHeaderListener &listener);
    void readWorldFile(const QString &stem);
    void readStatistics(const QString &stem);

    BinDemHeader m_header;
    int m_statisticsMinimum = -9999;
    int m_statisticsMaximum = 9999;
};
