#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

#include <limits>

/// What a pass from elevations to grays found.
struct GrayConversion {
    /// A search for the extremes starts beyond every elevation.
    static constexpr double Beyond = std::numeric_limits<float>::max();

    double zScale = 1.0;       ///< by which every elevation was multiplied
    qint32 belowCount = 0;     ///< pixels cut off at gray 0
    qint32 aboveCount = 0;     ///< pixels cut off at gray 255
    double minValue = Beyond;  ///< smallest scaled elevation of the plain pass
    double maxValue = -Beyond; ///< largest one

    /// Whether any pixel was cut off.
    [[nodiscard]] bool hasCutOff() const { return belowCount > 0 || aboveCount > 0; }
    /// The z scale that would spread this range over all grays.
    [[nodiscard]] double normalizingScale() const
    {
        return 255.0 / (maxValue - minValue) * zScale;
    }
};

/// A picture of grays, and what became of the elevations.
struct GrayPicture {
    QImage picture;
    GrayConversion found;
};

// All of these keep the image's buffer where its format allows that, so that an image
// which is handed over is changed in place. They step before each row.

/// Turns elevations into grays: a gray is the scaled elevation itself.
[[nodiscard]] Result<GrayPicture> elevationToGray(ElevationImage image, double zScale,
                                                  Progress &progress);

/// Turns elevations into grays: a gray is the elevation's place in the range that an
/// earlier pass has found.
[[nodiscard]] Result<GrayPicture>
normalizeToGray(ElevationImage image, const GrayConversion &found, Progress &progress);

/// Smallest and largest value of an image.
struct ElevationLimits {
    double lowest = GrayConversion::Beyond;
    double highest = -GrayConversion::Beyond;
};

/// Elevations that were sums of colours, and their range.
struct SummedElevations {
    ElevationImage image;
    ElevationLimits range;
};

/// Turns colours into elevations, the sums of red, green and blue.
[[nodiscard]] Result<SummedElevations> grayToElevation(ElevationImage image,
                                                       Progress &progress);

/// The range of the elevations. `ignoreZeros` leaves zeros out of the lowest one
/// alone: in a file of zeros that stays where the search started.
[[nodiscard]] ElevationLimits elevationRange(const QImage &image, bool ignoreZeros);

/// Cuts an elevation to an integer, held within those of an elevation file.
[[nodiscard]] int elevationAsInteger(double elevation);

/// A palette with row 0 in all its rows.
[[nodiscard]] QImage withTopRowSpread(QImage palette);

/// Maps elevations from `lower` (left end of the palette's top row) to `upper`
/// (right end) to colours; what lies beyond gets the colour of the end, and `cut` is told
/// how many do. Fails without a palette.
[[nodiscard]] Result<QImage> elevationToColor(ElevationImage image, const QImage &palette,
                                              int lower, int upper, Progress &progress,
                                              qint64 *cut = nullptr);

/// Gives each pixel whose blue is 0 a blue of 1 and makes it opaque.
[[nodiscard]] Result<QImage> changeBlue0Pixels(QImage image, Progress &progress);
