#pragma once

#include "importers/importlosses.h"
#include "iso8211/sc_subfield.h"
#include "raster/elevationimage.h"

#include <QString>

#include <string>

/// What the small modules of a transfer tell of it.
struct SdtsTransfer {
    QString ddshFile;  ///< data dictionary: schema
    QString ddomFile;  ///< data dictionary: domain
    QString cel0File;  ///< cells
    QString inputUnit; ///< in lower case
    std::string fmt;   ///< of the elevations, such as "BI16"
    std::string atlb;  ///< their label, such as "ELEVATION"
    int voidValue = 0;
    int fillValue = 0;
};

/// What a walk over modules has come to.
struct SdtsState : SdtsTransfer {
    ElevationImage image; ///< null until the extent of the cells is known
    int col = 0;          ///< counted from 1, as the row
    int maxCol = 0;
    int row = 0;
    int maxRow = 0;
    ImportLosses losses;            ///< of the cells
    QString moduleName;             ///< scratch of a walk
    double calibrationFactor = 1.0; ///< from units of the file to those of the output

    /// Stores an elevation of the file at the current column and row. The image rounds
    /// a position by cutting half a pixel beyond it, so that one before the first counts
    /// as the first.
    void setElevation(double value);
};

/// The import whose modules are being walked; null otherwise.
extern SdtsState *pSDTSImport;

/// What the walk over a module calls for each subfield, one for each kind of module.
/// They fill the running import and return 0. Mnemonics count in any case.

/// CATD: the file names of the other modules, each after the name of its module.
int UseSubfieldToDetermineFileNames(sc_Subfield subfield);
/// DDSH: unit, format and label of the elevations; the last ones hold.
int UseSubfieldToDetermineUnits(sc_Subfield subfield);
/// DDOM: the values of void and fill. The definition must follow its value.
int UseSubfieldToDetermineVoidAndFill(sc_Subfield subfield);
/// CEL0: the greatest column, one beyond the last cell, and the greatest row.
int UseSubfieldToDetermineFileSize(sc_Subfield subfield);
/// CEL0: the elevations.
int UseSubfieldToReadElevations(sc_Subfield subfield);
