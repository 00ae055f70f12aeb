#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "raster/elevationimage.h"

class QIODevice;

/// What a user sets for the import of the template's format.
struct TemplateImportOptions {
    qint32 voidValue = -32768; ///< stands for samples that are unknown and become 0
};

/// Reads elevations that stand as signed 16-bit integers, row by row from the north,
/// after the numbers of columns and rows as unsigned ones; all little-endian.
///
/// `fileName` is named by the failure's text. A file that is too short, has no columns or
/// rows, or asks for more memory than there is, gives none.
[[nodiscard]] Result<ElevationImage> importTemplate(QIODevice &in,
                                                    const TemplateImportOptions &options,
                                                    const QString &fileName,
                                                    Progress &progress);
