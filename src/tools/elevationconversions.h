#pragma once

#include "raster/elevationimage.h"

#include <limits>

/// What a pass from elevations to grays needs and what it finds.
struct GrayConversion {
    /// A search for the extremes starts beyond every elevation.
    static constexpr double Beyond = std::numeric_limits<float>::max();

    double zScale = 1.0;
    qint32 belowCount = 0;     ///< pixels cut off at gray 0
    qint32 aboveCount = 0;     ///< pixels cut off at gray 255
    double minValue = Beyond;  ///< smallest scaled elevation of the last plain pass
    double maxValue = -Beyond; ///< largest one

    /// The z scale that would spread this range over all grays.
    [[nodiscard]] double normalizingScale() const
    {
        return 255.0 / (maxValue - minValue) * zScale;
    }
};

/// Turns elevations into grays, in place. A gray is the scaled elevation itself,
/// or, with `normalize`, its place in the range that an earlier pass has found.
void elevationToGray(ElevationImage &image, bool normalize, GrayConversion &conversion);

/// Smallest and largest value of an image.
struct ElevationLimits {
    double lowest = GrayConversion::Beyond;
    double highest = -GrayConversion::Beyond;
};

/// Turns colours into elevations, the sums of red, green and blue, in place.
/// Gives the smallest and the largest sum.
ElevationLimits grayToElevation(ElevationImage &image);

/// The range of the elevations. `ignoreZeros` leaves zeros out of the lowest one
/// alone: in a file of zeros that stays where the search started.
[[nodiscard]] ElevationLimits elevationRange(const ElevationImage &image,
                                             bool ignoreZeros);

/// Cuts an elevation to an integer, held within those of an elevation file.
[[nodiscard]] int elevationAsInteger(double elevation);

/// Copies row 0 over all other rows.
void spreadTopRow(QImage &palette);

/// Maps elevations from `lower` (left end of the palette's top row) to `upper`
/// (right end) to colours, in place. False without a palette.
[[nodiscard]] bool elevationToColor(ElevationImage &image, const QImage &palette,
                                    int lower, int upper);

/// Gives each pixel whose blue is 0 a blue of 1 and makes it opaque, in place.
void changeBlue0Pixels(QImage &image);
