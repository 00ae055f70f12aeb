#include "importdialogs/importdialogs.h"

#include "importdialogs/asciiirregulardialog.h"
#include "importdialogs/asciiregulardialog.h"
#include "importdialogs/binconversiondialog.h"
#include "importdialogs/japanconversiondialog.h"
#include "importdialogs/sdtsconversiondialog.h"
#include "importdialogs/usgsdemconversiondialog.h"

namespace {

constexpr DialogEntry Entries[] = {
    {"action_UsgsDEMConversionDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "&USGS DEMs..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert USGS DEM File(s) Into Elevation File"),
     makeDialog<UsgsDemConversionDialog>},
    {"action_BinConversionDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "Bi&nary DEMs..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert Binary File Into Elevation File"),
     makeDialog<BinConversionDialog>},
    {"action_AsciiRegularDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "ASCII &Regular..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert ASCII Regular Mesh Into Elevation File"),
     makeDialog<AsciiRegularDialog>},
    {"action_AsciiIrregularDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "ASCII &Irregular..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert ASCII Irregular Mesh Into Elevation File"),
     makeDialog<AsciiIrregularDialog>},
    {"action_SdtsConversionDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "&SDTS..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert SDTS File Into Elevation File"),
     makeDialog<SdtsConversionDialog>},
    {"action_JapanConversionDialog", "menu_Import_Filters",
     QT_TRANSLATE_NOOP("DialogEntry", "&Japan DEMs..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Japan DEM Import"),
     makeDialog<JapanConversionDialog>},
};

} // namespace

std::span<const DialogEntry> importDialogs() { return Entries; }
