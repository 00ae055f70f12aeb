#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"
#include "tools/elevationconversions.h"
#include "tools/merge.h"
#include "tools/rectify.h"
#include "tools/resample.h"

#include <QImage>
#include <QString>

#include <optional>

// The tools from their files to the picture that is to be written. The text of a failure
// is what the user is told; a null picture, for want of memory, cannot be saved, and that
// is told then. `cut` is told how many values had to be cut, see each tool.

/// "Could not open file "..."."
[[nodiscard]] QString couldNotOpenText(const QString &fileName);
/// "Could not load image file "..."."
[[nodiscard]] QString couldNotLoadText(const QString &fileName);

/// A picture; it could not be opened otherwise.
[[nodiscard]] Result<QImage> openPicture(const QString &fileName);
/// A kernel that is no larger than a convolution takes.
[[nodiscard]] Result<QImage> openKernel(const QString &fileName);
/// A palette with its top row in all rows.
[[nodiscard]] Result<QImage> openPalette(const QString &fileName);

[[nodiscard]] Result<QImage> changeBlue0File(const QString &from, Progress &progress);
[[nodiscard]] Result<QImage> convolveFile(const QString &from, const QString &kernel,
                                          Progress &progress, qint64 *cut = nullptr);
[[nodiscard]] Result<QImage> maskFile(const QString &from, const QString &mask,
                                      Progress &progress);
[[nodiscard]] Result<QImage> mergeFiles(const QString &first, const QString &second,
                                        const MergeOptions &options, Progress &progress,
                                        qint64 *cut = nullptr);
[[nodiscard]] Result<QImage>
rectifyFile(const QString &from, const RectifyCorners &corners, Progress &progress);
[[nodiscard]] Result<ElevationImage> resampleFile(const QString &from,
                                                  const ResampleRequest &request,
                                                  double zScale, Progress &progress,
                                                  qint64 *cut = nullptr);

[[nodiscard]] Result<GrayPicture> elevationFileToGray(const QString &from, double zScale,
                                                      Progress &progress);
/// Loads the file afresh, since a raster beside its grays may be too large.
[[nodiscard]] Result<GrayPicture>
normalizeFileToGray(const QString &from, const GrayConversion &found, Progress &progress);
/// Tells what was cut off, and asks whether to normalize.
[[nodiscard]] QString normalizationQuestion(const GrayConversion &found);

[[nodiscard]] Result<SummedElevations> grayFileToElevation(const QString &from,
                                                           Progress &progress);
/// Tells the range of the elevations.
[[nodiscard]] QString summedElevationsText(const ElevationLimits &range);

/// Which elevations get the ends of a palette; what is absent is that of the file.
struct PaletteRange {
    std::optional<int> lower = {};
    std::optional<int> upper = {};
    bool ignoreZeros = false; ///< when the lowest elevation of the file is looked for
};

/// The elevations of an image that are proposed for the ends of a palette.
[[nodiscard]] PaletteRange proposedRange(const ElevationImage &image, bool ignoreZeros);

[[nodiscard]] Result<QImage> elevationFileToColor(const QString &from,
                                                  const QImage &palette,
                                                  const PaletteRange &range,
                                                  Progress &progress,
                                                  qint64 *cut = nullptr);
