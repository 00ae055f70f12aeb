#pragma once

#include "importers/sdtswalk.h"
#include "iso8211/sc_subfield.h"
#include "raster/elevationimage.h"

#include <QString>

#include <string>

/// Turns an SDTS raster transfer, a set of files called modules, into an elevation
/// raster: first the small modules that describe it, then the cells, twice, for
/// their extent and for their values.
///
/// Its numbers are filled by the UseSubfieldTo... functions while modules are walked.
class SdtsConversion {
public:
    /// Finds the modules from the catalog and reads the unit and the format of the
    /// elevations and the values that stand for void and fill. What a module does not
    /// tell, or cannot, stays as it was.
    void readCATDFile(const QString &catdFile);

    /// Reads the cells; false if no image can be made of their extent.
    [[nodiscard]] bool readCells();

    /// Stores an elevation of the file at the current column and row. The image rounds
    /// a position by cutting half a pixel beyond it, so that one before the first counts
    /// as the first.
    void setElevation(double value);

    CConverterType converterTypes[8];
    ElevationImage image; // null until the cells are read
    int col = 0;          // counted from 1, as the row
    int maxCol = 0;
    int row = 0;
    int maxRow = 0;
    int voidValue = 0;
    int fillValue = 0;
    QString moduleName;             // scratch of a walk
    QString ddshFile;               // data dictionary: schema
    QString ddomFile;               // data dictionary: domain
    QString cel0File;               // cells
    QString inputUnit;              // in lower case
    std::string fmt;                // of the elevations, such as "BI16"
    std::string atlb;               // their label, such as "ELEVATION"
    double calibrationFactor = 1.0; // from units of the file to those of the output

private:
    void walk(const QString &fileName, int (*use)(sc_Subfield));
    void resetExtent();
    [[nodiscard]] ElevationImage makeImage() const;
};
