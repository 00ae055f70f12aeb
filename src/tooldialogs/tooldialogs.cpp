#include "tooldialogs/tooldialogs.h"

#include "tooldialogs/changeblue0pixelsdialog.h"
#include "tooldialogs/convolutiondialog.h"
#include "tooldialogs/elevationtocolordialog.h"
#include "tooldialogs/elevationtograydialog.h"
#include "tooldialogs/graytoelevationdialog.h"
#include "tooldialogs/maskdialog.h"
#include "tooldialogs/mergedialog.h"
#include "tooldialogs/rectifydialog.h"
#include "tooldialogs/resampledialog.h"

namespace {

constexpr DialogEntry Entries[] = {
    {"action_ElevationToColorDialog", "menuFormat_Conversions",
     QT_TRANSLATE_NOOP("DialogEntry", "Elevation To &Color..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert Elevation File Into Color File"),
     makeDialog<ElevationToColorDialog>},
    {"action_ElevationToGrayDialog", "menuFormat_Conversions",
     QT_TRANSLATE_NOOP("DialogEntry", "Elevation To &Gray..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert Elevation File Into Grayscale File"),
     makeDialog<ElevationToGrayDialog>},
    {"action_GrayToElevationDialog", "menuFormat_Conversions",
     QT_TRANSLATE_NOOP("DialogEntry", "Gray To Elevation.&.."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convert Grayscale File Into Elevation File"),
     makeDialog<GrayToElevationDialog>},
    {"action_ChangeBlue0PixelsDialog", "menuFormat_Conversions",
     QT_TRANSLATE_NOOP("DialogEntry", "Change Blue = 0 Pi&xels..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Eliminate BLUE = 0 Values"),
     makeDialog<ChangeBlue0PixelsDialog>},
    {"action_ConvolutionDialog", "menu_Math_Functions",
     QT_TRANSLATE_NOOP("DialogEntry", "Con&volution..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Convolution"), makeDialog<ConvolutionDialog>},
    {"action_MergeDialog", "menu_Math_Functions",
     QT_TRANSLATE_NOOP("DialogEntry", "&Merge..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Merge Files"), makeDialog<MergeDialog>},
    {"action_MaskDialog", "menu_Math_Functions",
     QT_TRANSLATE_NOOP("DialogEntry", "M&ask..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Mask a File"), makeDialog<MaskDialog>},
    {"action_ResampleDialog", "menu_Math_Functions",
     QT_TRANSLATE_NOOP("DialogEntry", "Re&sample Elevation File..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Resample Elevation File"),
     makeDialog<ResampleDialog>},
    {"action_RectifyDialog", "menu_Math_Functions",
     QT_TRANSLATE_NOOP("DialogEntry", "&Rectify..."),
     QT_TRANSLATE_NOOP("DialogEntry", "Rectify"), makeDialog<RectifyDialog>},
};

} // namespace

std::span<const DialogEntry> toolDialogs() { return Entries; }
