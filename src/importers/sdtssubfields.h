#pragma once

#include "iso8211/sc_subfield.h"

class SdtsConversion;

/// The conversion whose modules are being walked; null otherwise.
extern SdtsConversion *pSDTSImport;

/// What the walk over a module calls for each subfield, one for each kind of module.
/// They fill the running conversion and return 0. Mnemonics count in any case.

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
