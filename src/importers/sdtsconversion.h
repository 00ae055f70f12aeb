#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "importers/sdtssubfields.h"
#include "raster/elevationimage.h"

#include <QString>

/// Turns an SDTS raster transfer, a set of files called modules, into an elevation
/// raster: first the small modules that describe it, then the cells, twice, for
/// their extent and for their values.
class SdtsConversion {
public:
    /// Finds the modules from the catalog and reads the unit and the format of the
    /// elevations and the values that stand for void and fill. What a module does not
    /// tell, or cannot, stays as it was.
    void readCATDFile(const QString &catdFile);
    /// What the small modules told.
    [[nodiscard]] const SdtsTransfer &transfer() const { return m_state; }

    /// Reads the cells; fails if no image can be made of their extent. The factor leads
    /// from units of the file to those of the output. Steps by records.
    [[nodiscard]] Result<ElevationImage> readCells(double calibrationFactor,
                                                   Progress &progress);
    /// Of the cells that were read last.
    [[nodiscard]] const ImportLosses &losses() const { return m_state.losses; }

private:
    [[nodiscard]] bool walk(const QString &fileName, int (*use)(sc_Subfield),
                            Progress &progress);
    [[nodiscard]] ElevationImage makeImage() const;

    SdtsState m_state;
};

/// Tells that the output cannot be given in the unit of the input.
[[nodiscard]] QString unknownUnitText(const SdtsTransfer &transfer);
