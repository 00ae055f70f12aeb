#include "importers/sdtsconversion.h"

#include "importers/blankelevation.h"
#include "importers/sdtssubfields.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

void SdtsConversion::walk(const QString &fileName, int (*use)(sc_Subfield))
{
    pSDTSImport = this;
    UseSubfield = use;
    // A module that cannot be opened tells nothing, and is no failure.
    ReadSDTS(QFile::encodeName(fileName).constData(), converterTypes);
    UseSubfield = nullptr;
    pSDTSImport = nullptr;
}

void SdtsConversion::resetExtent()
{
    col = maxCol = row = maxRow = 0;
    std::fill(std::begin(converterTypes), std::end(converterTypes), CConverterType());
}

void SdtsConversion::readCATDFile(const QString &catdFile)
{
    resetExtent();
    walk(catdFile, UseSubfieldToDetermineFileNames);
    // The modules lie beside their catalog, whatever folders it names.
    const QString folder = QFileInfo(catdFile).absolutePath() + '/';
    for (QString *const file : {&ddshFile, &ddomFile, &cel0File})
        *file = folder + QFileInfo(*file).fileName();
    walk(ddshFile, UseSubfieldToDetermineUnits);
    walk(ddomFile, UseSubfieldToDetermineVoidAndFill);
}

bool SdtsConversion::readCells()
{
    resetExtent();
    // The format controls of the cells only say that they are binary.
    converterTypes[0] = {atlb.c_str(), fmt.c_str()};
    walk(cel0File, UseSubfieldToDetermineFileSize);
    image = makeImage();
    if (image.isNull())
        return false;
    walk(cel0File, UseSubfieldToReadElevations);
    return true;
}

ElevationImage SdtsConversion::makeImage() const
{
    // Two numbers of a small file may claim any extent, but the file has at least a
    // byte for each cell that is no gap.
    constexpr double AlwaysAllowed = 16.0 * 1024 * 1024;
    constexpr double PixelsPerByte = 4.0;
    // The column counter ends one beyond the last cell.
    const double columns = maxCol - 1.0;
    const double allowed =
        std::max(AlwaysAllowed, PixelsPerByte * double(QFileInfo(cel0File).size()));
    if (columns * maxRow > allowed)
        return {};
    return blankElevation(columns, maxRow);
}

void SdtsConversion::setElevation(double value)
{
    constexpr int Lowest = std::numeric_limits<int>::min();
    if (image.isNull() || col == Lowest || row == Lowest)
        return; // below them there is no number, and surely no cell
    image.setElevation(col - 1, row - 1, value * calibrationFactor);
}
