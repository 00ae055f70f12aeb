#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "importers/importlosses.h"
#include "importers/usgsdemdata.h"
#include "raster/elevationimage.h"

#include <QStringList>

#include <limits>

class UsgsDemReader;

/// Two successive samples of a profile that lie suspiciously far apart.
struct SuspiciousElevation {
    double previous = 0.0;
    double current = 0.0;
    int column = 0; // of the current one in the image
    qint64 row = 0;

    /// Tells the jump and asks whether to go on.
    [[nodiscard]] QString question() const;
};

/// What an import asks on its way, and the file that it has come to.
class UsgsDemQuestions {
public:
    virtual ~UsgsDemQuestions() = default;

    /// Shows a header before a file is read; false ends the import.
    [[nodiscard]] virtual bool confirmHeader(UsgsDemData &data) = 0;
    /// Shows a jump; false ends the checking of the current file.
    [[nodiscard]] virtual bool continueChecking(const SuspiciousElevation &jump) = 0;
    /// Tells the file that is being read; an empty name when it is done with.
    virtual void readingFile(const QString & /*fileName*/) {}
};

/// Area and pixel size of the raster that several files are laid into.
struct UsgsDemMosaic {
    static constexpr double Unset = std::numeric_limits<float>::max();

    double minEasting = Unset;
    double maxEasting = -Unset;
    double minNorthing = Unset;
    double maxNorthing = -Unset;
    double resolutionX = Unset; // the finest of all files
    double resolutionY = Unset;

    void includeCorners(const UsgsDemData &data);
    void includeResolution(const UsgsDemData &data);
    /// An image of the mosaic's size, all 0; null where that is no usable size.
    [[nodiscard]] ElevationImage makeImage() const;
    /// Column of an easting, counted from the left, and row of a northing, counted
    /// from the bottom.
    [[nodiscard]] int columnOf(double easting) const;
    [[nodiscard]] int rowOf(double northing) const;
};

/// Lays USGS DEM files into one elevation raster.
class UsgsDemImport {
public:
    /// The questions are borrowed.
    UsgsDemImport(int voidValue, UsgsDemQuestions &questions);

    /// Reads all files. Stopped also where a header was not confirmed. The image is null
    /// if the headers give no usable size. Steps before each profile.
    [[nodiscard]] Result<ElevationImage> run(const QStringList &fileNames,
                                             Progress &progress);

    /// Reads a file's header and widens the mosaic by its corners; false, with nothing
    /// changed, if the file cannot be opened.
    bool parseDataHeader(UsgsDemData &data, const QString &fileName);
    /// Stores the samples of an open file whose header was read; the number of those
    /// above 0.
    [[nodiscard]] Result<qint64> readProfiles(QIODevice &in, const UsgsDemData &data,
                                              ElevationImage &image, Progress &progress);

    /// Of the samples that the last run has stored.
    [[nodiscard]] const ImportLosses &losses() const { return m_losses; }

    [[nodiscard]] const UsgsDemMosaic &mosaic() const { return m_mosaic; }
    void setMosaic(const UsgsDemMosaic &mosaic) { m_mosaic = mosaic; }

private:
    // A file's samples; one that cannot be opened has none.
    [[nodiscard]] Result<qint64> readData(UsgsDemData &data, const QString &fileName,
                                          ElevationImage &image, Progress &progress);
    // The number of samples above 0.
    qint64 readProfile(UsgsDemReader &in, bool stored, ElevationImage &image);

    double m_voidValue;
    UsgsDemQuestions &m_questions;
    UsgsDemMosaic m_mosaic;
    ImportLosses m_losses;
    bool m_checking = true; // for suspicious elevations in the current file
};
