#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "importers/bindemheader.h"
#include "importers/importlosses.h"
#include "raster/elevationimage.h"

#include <QString>

#include <limits>

class QIODevice;

/// The rectangle to cut from a raster, in map units, and how to store its samples.
struct BinDemOptions {
    double upperLeftX = 0.0;
    double upperLeftY = 0.0;
    double extentX = 0.0;
    double extentY = 0.0;
    double zScale = 256.0;
    bool keepNoDataValues = false;
    int statisticsMaximum = 9999; // bytes above it are negative
};

/// A coordinate as a form shows it: a multiple of 0.000001. What is no number is 0.
[[nodiscard]] double snappedCoordinate(double value);

/// Size of a rectangle's image in whole units of 1024 bytes, as decimal digits.
[[nodiscard]] QString binDemKilobytes(const BinDemHeader &header,
                                      const BinDemOptions &options);

/// Lowest and highest elevation that a conversion stored.
struct StoredRange {
    double minimum = std::numeric_limits<float>::max();
    double maximum = -minimum;

    void include(double elevation);
    /// The two numbers as the user is told them.
    [[nodiscard]] QString text() const;
    /// The same as a whole message.
    [[nodiscard]] QString message() const;
};

/// Asked whether to go on with a file whose data cannot be located.
class BinDemQuestions {
public:
    virtual ~BinDemQuestions() = default;
    /// The question's text.
    [[nodiscard]] static QString withoutKeyword();
    [[nodiscard]] virtual bool proceedWithoutKeyword() = 0;
};

/// What a conversion made.
struct BinDem {
    ElevationImage image; ///< null if the options give no usable size
    StoredRange range;
    ImportLosses losses;
};

/// Cuts a rectangle out of a raw raster; beside the image only one row is in memory.
/// Stopped if the user does not want to proceed. Steps before each row.
[[nodiscard]] Result<BinDem> convertBinDem(QIODevice &in, const BinDemHeader &header,
                                           const BinDemOptions &options,
                                           BinDemQuestions &questions,
                                           Progress &progress);
